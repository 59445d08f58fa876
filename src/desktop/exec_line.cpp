#include "desktop/exec_line.h"

#include <algorithm>

namespace ledrix {
namespace {

constexpr std::string_view kBlanks = " \t\n\r";
constexpr std::string_view kCodes = "fFuUickdDnNvm";
constexpr std::string_view kEscapedBetweenQuotes = "\"`$\\";

// Cuts one line; `failed` tells that it is broken.
class Cutter {
 public:
  explicit Cutter(std::string_view line) : line_(line) {}

  std::optional<std::vector<LauncherWord>> Cut() {
    while (true) {
      at_ = std::min(line_.find_first_not_of(kBlanks, at_), line_.size());
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
  struct Piece : LauncherPiece {
    bool is_quoted = false;
  };

  LauncherWord Word() {
    pieces_.clear();
    while (!failed_ && at_ < line_.size() && kBlanks.find(line_[at_]) == std::string_view::npos) {
      const char c = line_[at_++];
      if (c == '"' || c == '\'') {
        Quoted(c);
      } else if (c == '\\') {
        AddText(Next());
      } else if (c == '%') {
        AddCode(Next(), false);
      } else {
        AddText(c);
      }
    }
    return FinishedWord();
  }

  // What follows an opening quotation mark, to the closing one.
  void Quoted(char mark) {
    AddText("");
    while (!failed_) {
      const char c = Next();
      if (c == mark) return;
      if (c == '\\' && mark == '"' && at_ < line_.size() &&
          kEscapedBetweenQuotes.find(line_[at_]) != std::string_view::npos) {
        AddText(line_[at_++]);
      } else if (c == '%') {
        AddCode(Next(), true);
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

  void AddCode(char code, bool is_quoted) {
    if (code == '%') return AddText("%");
    // The empty text of an opening quotation mark is no text beside the code.
    if (is_quoted && pieces_.size() == 1 && pieces_[0].text.empty()) pieces_.clear();
    pieces_.push_back({{code, {}}, is_quoted});
  }

  LauncherWord FinishedWord() {
    LauncherWord word;
    for (const Piece& piece : pieces_) {
      if (piece.code == '\0') {
        Append(word, piece.text);
      } else if (piece.is_quoted && pieces_.size() > 1) {
        Append(word, std::string("%") + piece.code);
      } else {
        failed_ |= kCodes.find(piece.code) == std::string_view::npos;
        word.push_back(piece);
      }
    }
    return word;
  }

  static void Append(LauncherWord& word, const std::string& text) {
    if (word.empty() || word.back().code != '\0') word.emplace_back();
    word.back().text += text;
  }

  std::string_view line_;
  size_t at_ = 0;  // of the next character
  bool failed_ = false;
  std::vector<Piece> pieces_;  // of the word being cut
  std::vector<LauncherWord> words_;
};

}  // namespace

std::optional<std::vector<LauncherWord>> CutExecLine(std::string_view line) {
  return Cutter(line).Cut();
}

}  // namespace ledrix
