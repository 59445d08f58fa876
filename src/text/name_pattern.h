// Name patterns: "*" is any run of characters, "?" any one character, "#" any digit, "[abc]" one
// character of a list and "[!abc]" one character not in it. A "-" in a list stands for itself, a
// "[" that is never closed as well.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ledrix {

enum class LetterCase { kIgnore, kRespect };

// Patterns joined by ";", read once to be held against many names.
class PatternList {
 public:
  PatternList(std::string_view patterns, LetterCase letter_case);
  // One pattern, in which a ";" is a character.
  static PatternList Single(std::string_view pattern, LetterCase letter_case);

  // True when the name matches one of the patterns. An empty pattern matches only the empty name.
  bool Matches(std::string_view name) const;

 private:
  // One place of a pattern and, for a list, its characters.
  struct Place {
    enum class Kind { kRun, kAny, kDigit, kOneOf, kNoneOf };
    Kind kind;
    std::u32string characters;
    bool Takes(char32_t c) const;
  };
  using Pattern = std::vector<Place>;

  explicit PatternList(LetterCase letter_case) : letter_case_(letter_case) {}
  static Pattern Read(const std::u32string& text);
  static Place ReadList(const std::u32string& text, size_t& position);
  static bool Matches(const std::u32string& name, const Pattern& pattern);

  LetterCase letter_case_;
  std::vector<Pattern> patterns_;
};

// True when the whole name matches the pattern. Both are UTF-8; a byte that is none matches
// itself, and "?" and "*" take it as one character.
bool MatchesPattern(std::string_view name, std::string_view pattern, LetterCase letter_case);

}  // namespace ledrix
