#include "desktop/exec_line.h"

#include <algorithm>

namespace ledrix {
namespace {

constexpr std::string_view kWordEnds = " \t\n\r";
constexpr std::string_view kCodes = "fFuUickdDnNvm";
constexpr std::string_view kEscapedBetweenQuotes = "\"`$\\";

// Cuts one line; `failed` tells that it is broken.
class Cutter {
 public:
  explicit Cutter(std::string_view line) : line_(line) {}

  std::optional<std::vector<LauncherWord>> Cut() {
    while (true) {
      at_ = std::min(line_.find_first_not_of(kWordEnds, at_), line_.size());
      if (at_ == line_.size()) break;
      LauncherWord word = Word();
      if (failed_) return std::nullopt;
      words_.push_back(std::move(word));
    }
    if (words_.empty()) return std::nullopt;
    const LauncherWord& program = words_.front();
    if (program.size() != 1 || program[0].code != '\0' || program[0].text.empty()) {
      return std::nullopt;
    }
    return std::move(words_);
  }

 private:
  LauncherWord Word() {
    pieces_.clear();
    is_quoted_ = false;
    while (!failed_ && at_ < line_.size() && kWordEnds.find(line_[at_]) == std::string_view::npos) {
      const char c = line_[at_++];
      if (c == '"' || c == '\'') {
        Quoted(c);
      } else if (c == '\\') {
        is_quoted_ = true;
        AddText(Next());
      } else if (c == '%') {
        AddCode(Next());
      } else {
        AddText(c);
      }
    }
    return FinishedWord();
  }

  // What follows an opening quotation mark, to the closing one.
  void Quoted(char mark) {
    is_quoted_ = true;
    AddText("");
    while (!failed_) {
      const char c = Next();
      if (c == mark) return;
      if (c == '\\' && mark == '"' && at_ < line_.size() &&
          kEscapedBetweenQuotes.find(line_[at_]) != std::string_view::npos) {
        AddText(line_[at_++]);
      } else if (c == '%') {
        AddCode(Next());
      } else {
        AddText(c);
      }
    }
  }

  // The next character; a line that ends here is broken.
  char Next() {
    if (at_ < line_.size()) return line_[at_++];
    failed_ = true;
    return '\0';
  }

  void AddText(char c) { AddText(std::string_view(&c, 1)); }
  void AddText(std::string_view text) {
    if (pieces_.empty() || pieces_.back().code != '\0') pieces_.emplace_back();
    pieces_.back().text += text;
  }

  void AddCode(char code) {
    if (code == '%') return AddText("%");
    // The empty text of an opening quotation mark is no text beside the code.
    if (pieces_.size() == 1 && pieces_[0].code == '\0' && pieces_[0].text.empty()) pieces_.clear();
    pieces_.push_back({code, {}});
  }

  // A code beside other text stays text where there are quotation marks or backslashes.
  LauncherWord FinishedWord() {
    std::string text;
    for (const LauncherPiece& piece : pieces_) {
      const bool is_code = piece.code != '\0';
      text += is_code ? std::string("%") + piece.code : piece.text;
      failed_ |= is_code && !is_script() && kCodes.find(piece.code) == std::string_view::npos;
    }
    return is_script() ? LauncherWord{{'\0', text}} : pieces_;
  }
  bool is_script() const { return is_quoted_ && pieces_.size() > 1; }

  std::string_view line_;
  size_t at_ = 0;  // of the next character
  bool failed_ = false;
  LauncherWord pieces_;     // of the word being cut
  bool is_quoted_ = false;  // whether any part of it is
  std::vector<LauncherWord> words_;
};

}  // namespace

std::optional<std::vector<LauncherWord>> CutExecLine(std::string_view line) {
  return Cutter(line).Cut();
}

}  // namespace ledrix
