// Name patterns: "*" is any run of characters, "?" any one character, "#" any digit, "[abc]" one
// character of a list and "[!abc]" one character not in it. A "-" in a list stands for itself, a
// "[" that is never closed as well.
#pragma once

#include <string_view>

namespace ledrix {

enum class LetterCase { kIgnore, kRespect };

// True when the whole name matches the pattern. Both are UTF-8; a byte that is none matches
// itself, and "?" and "*" take it as one character.
bool MatchesPattern(std::string_view name, std::string_view pattern, LetterCase letter_case);

// True when the name matches one of the patterns that ";" joins. An empty pattern matches only
// the empty name.
bool MatchesAnyPattern(std::string_view name, std::string_view patterns, LetterCase letter_case);

}  // namespace ledrix
