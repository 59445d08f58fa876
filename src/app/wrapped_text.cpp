#include "app/wrapped_text.h"

#include <vector>

#include "text/code_page_932.h"
#include "text/utf8.h"

namespace ledrix {
namespace {

bool ClosesText(std::string_view character) {
  static constexpr std::string_view kClosing[] = {"。", "、", "）", "」", "・"};
  for (const std::string_view closing : kClosing) {
    if (character == closing) return true;
  }
  return false;
}

bool OpensText(std::string_view character) {
  return character == "（" || character == "「";
}

// The pieces that a line may end behind.
std::vector<std::string_view> Pieces(std::string_view text) {
  std::vector<std::string_view> pieces;
  bool goes_on = false;  // the next character belongs to the last piece
  for (size_t i = 0; i < text.size();) {
    const size_t size = DecodeUtf8(text, i).size;
    const std::string_view character = text.substr(i, size);
    const bool is_word = size == 1 && character != " " && character != "\n";
    if (!pieces.empty() && ((goes_on && character != " ") || ClosesText(character))) {
      std::string_view& last = pieces.back();
      last = {last.data(), last.size() + size};
    } else {
      pieces.push_back(character);
    }
    // An ASCII word, with nothing of another kind behind it.
    const bool is_next_word =
        i + size < text.size() && DecodeUtf8(text, i + size).size == 1 && text[i + size] != '\n';
    goes_on = OpensText(character) || (is_word && is_next_word);
    i += size;
  }
  return pieces;
}

// Line ends as the spaces that they stand for.
std::string OneLine(std::string_view text) {
  std::string line;
  for (const char c : text) {
    const bool is_after_japanese = !line.empty() && (line.back() & 0x80) != 0;
    if (c != '\n') {
      line += c;
    } else if (!is_after_japanese) {
      line += ' ';
    }
  }
  return line;
}

}  // namespace

size_t ColumnsOf(std::string_view text) {
  return EncodeSjis(std::string(text)).size();
}

std::string WrapText(std::string_view text, size_t indent, size_t width) {
  const std::string line = OneLine(text);
  std::string wrapped;
  size_t column = indent;
  for (const std::string_view piece : Pieces(line)) {
    const size_t columns = ColumnsOf(piece);
    if (column > indent && column + columns > width) {
      while (wrapped.back() == ' ') wrapped.pop_back();
      wrapped += "\n" + std::string(indent, ' ');
      column = indent;
    }
    if (column == indent && piece == " ") continue;
    wrapped += piece;
    column += columns;
  }
  return wrapped + "\n";
}

}  // namespace ledrix
