// UTF-8, the coding of everything the user sees, of option values and of source literals.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ledrix {

inline constexpr char32_t kReplacementCharacter = 0xFFFD;

// True when every byte is below 0x80: such a text is the same in UTF-8 and in Shift_JIS.
bool IsAscii(std::string_view text);

// One decoded character.
struct Utf8Char {
  char32_t character = 0;  // the byte itself when `valid` is false
  size_t size = 1;         // bytes taken, at least 1
  bool valid = false;      // false: one byte that is no valid UTF-8
};

// Decodes the character at a byte position counted from 0. Overlong forms, surrogates and values
// above U+10FFFF are invalid. REQUIRES: position < text.size().
Utf8Char DecodeUtf8(std::string_view text, size_t position);

void AppendUtf8(std::string& text, char32_t character);

// The characters of a text; a byte that is no valid UTF-8 becomes U+DC00 + byte, a value no valid
// character has, so that different bytes stay different.
std::u32string Utf8Characters(std::string_view text);

// The letter in upper or lower case, as Unicode has it and whatever the locale is; any other
// character unchanged.
char32_t ToUpper(char32_t character);
char32_t ToLower(char32_t character);

}  // namespace ledrix
