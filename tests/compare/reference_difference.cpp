#include "compare/reference_difference.h"

#include <optional>

namespace ledrix::test {
namespace {

// Slots are numbered from 1; a slot without a text is the end marker.
class Side {
 public:
  Side(const std::vector<std::string>& lines, int window)
      : lines_(lines), window_(window), slots_(window + 1) {}

  void Advance() {
    ended = false;
    if (current == last_) Read(/*look_ahead=*/false);
    current = Behind(current);
    if (!slots_[current]) ended = true;
  }

  // Moves a scan position one line on, reading when it stood on the last line read.
  void MoveOn(int& position) {
    ended = false;
    if (position == last_) Read(/*look_ahead=*/true);
    position = Behind(position);
    if (!slots_[position]) ended = true;
  }

  const std::optional<std::string>& At(int slot) const { return slots_[slot]; }

  int current = 0;
  bool ended = false;

 private:
  int Behind(int slot) const { return slot == window_ ? 1 : slot + 1; }

  void Read(bool look_ahead) {
    const int next = Behind(last_);
    if (look_ahead && next == current) {
      ended = true;  // the ring is full
      return;
    }
    last_ = next;
    if (next_line_ == lines_.size()) {
      slots_[next] = std::nullopt;
      ended = true;
    } else {
      slots_[next] = lines_[next_line_++];
    }
  }

  const std::vector<std::string>& lines_;
  int window_;
  std::vector<std::optional<std::string>> slots_;
  int last_ = 0;
  size_t next_line_ = 0;
};

class Reference {
 public:
  Reference(const std::vector<std::string>& old_lines, const std::vector<std::string>& new_lines,
            int window, int match)
      : old_(old_lines, window), new_(new_lines, window), match_(match) {}

  std::string Run() {
    old_.Advance();
    new_.Advance();
    while (!old_.ended || !new_.ended) Step();
    return decisions_;
  }

 private:
  // The end marker equals nothing.
  bool Equal(int o, int n) const { return old_.At(o) && new_.At(n) && *old_.At(o) == *new_.At(n); }

  void Add() {
    decisions_ += '+';
    new_.Advance();
  }
  void Delete() {
    decisions_ += '-';
    old_.Advance();
  }
  void Both(char decision) {
    decisions_ += decision;
    old_.Advance();
    new_.Advance();
  }

  void Step() {
    if (old_.ended) return Add();
    if (new_.ended) return Delete();
    if (Equal(old_.current, new_.current)) return Both('=');
    int os = old_.current;
    int ns = new_.current;
    int run = 0;
    while (run < match_) {
      old_.MoveOn(os);
      new_.MoveOn(ns);
      if (old_.ended && new_.ended) return Both('!');
      if (Equal(old_.current, ns)) {
        if (Confirm(old_.current, ns)) {
          while (new_.current != ns) Add();
          return;
        }
      } else if (Equal(os, new_.current) && Confirm(os, new_.current)) {
        while (old_.current != os) Delete();
        return;
      }
      run = Equal(os, ns) ? run + 1 : 0;
    }
    Both('!');
  }

  bool Confirm(int o, int n) {
    old_.ended = new_.ended = false;
    for (int count = 1; count < match_; ++count) {
      old_.MoveOn(o);
      new_.MoveOn(n);
      if (old_.ended || new_.ended || !Equal(o, n)) return false;
    }
    return true;
  }

  Side old_;
  Side new_;
  int match_;
  std::string decisions_;
};

}  // namespace

std::string ReferenceDecisions(const std::vector<std::string>& old_lines,
                               const std::vector<std::string>& new_lines, int window_lines,
                               int match_lines) {
  return Reference(old_lines, new_lines, window_lines, match_lines).Run();
}

}  // namespace ledrix::test
