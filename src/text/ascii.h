// What is done with letters, blanks and lines of ASCII. Bytes of 80 and above are left alone and
// never match, so UTF-8 may be passed everywhere; Shift_JIS only where a function says so, because
// its trail bytes include letters.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ledrix {

constexpr bool IsAsciiLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}
constexpr bool IsAsciiDigit(char c) {
  return c >= '0' && c <= '9';
}
constexpr char AsciiLower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 0x20) : c;
}
constexpr char AsciiUpper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 0x20) : c;
}

// The text with its ASCII letters in lower case.
std::string AsciiLowered(std::string_view text);

// True when the texts differ at most in the case of ASCII letters.
bool SameIgnoringAsciiCase(std::string_view a, std::string_view b);

// The text without the characters of `blanks` at its ends; by default a tab is none. Shift_JIS may
// be passed: blanks are no trail bytes.
std::string_view Trimmed(std::string_view text, std::string_view blanks = " ");

// The text cut at every separator; an empty piece stays a piece, so the result has one at least.
std::vector<std::string> SplitAt(std::string_view text, char separator);

// Takes the first line off a text, and its end, LF or CR LF, which is not returned. What follows
// the last line end is a line when it is not empty. Shift_JIS may be passed. REQUIRES: the text is
// not empty.
std::string_view TakeLine(std::string_view& text);

}  // namespace ledrix
