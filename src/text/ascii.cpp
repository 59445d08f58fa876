#include "text/ascii.h"

#include <algorithm>

namespace ledrix {

std::string AsciiLowered(std::string_view text) {
  std::string lowered(text);
  std::transform(lowered.begin(), lowered.end(), lowered.begin(), AsciiLower);
  return lowered;
}

bool SameIgnoringAsciiCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return AsciiLower(x) == AsciiLower(y); });
}

std::string_view Trimmed(std::string_view text, std::string_view blanks) {
  const size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::vector<std::string> SplitAt(std::string_view text, char separator) {
  std::vector<std::string> pieces;
  size_t start = 0;
  for (size_t end = text.find(separator); end != std::string_view::npos;
       end = text.find(separator, start)) {
    pieces.emplace_back(text.substr(start, end - start));
    start = end + 1;
  }
  pieces.emplace_back(text.substr(start));
  return pieces;
}

std::string_view TakeLine(std::string_view& text) {
  const size_t end = std::min(text.find('\n'), text.size());
  std::string_view line = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

}  // namespace ledrix
