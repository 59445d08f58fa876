// Unicode to and from Shift_JIS, by code page 932 as Windows has it.
//
// Where several codes stand for one character, the conversion to Shift_JIS picks the code that
// Windows picks: the JIS X 0208 rows first, then NEC row 13 (87xx), then the IBM extension
// (FAxx-FCxx), the NEC-selected duplicates (EDxx, EExx) last. Both Unicode spellings of the wave
// dash, the double vertical line, the full-width minus, cent, pound and not sign and the dash
// reach the one Shift_JIS code.
//
// The table is a part of the program, written by scripts/make_code_page_932.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "text/sjis_text.h"

namespace ledrix {

// Code page 932 by table, made by the compiler.
class CodePage932 {
 public:
  static const CodePage932& Get();

  // The Shift_JIS code of a character (one byte: below 0x100, else lead byte * 256 + trail byte),
  // or 0 when the code page lacks it. U+0000 gives 0 as well.
  uint16_t Encode(char32_t character) const {
    return character < 0x10000 ? encode_[character] : uint16_t{0};
  }

  // The character of a Shift_JIS code in the form above, or 0 when the code stands for none.
  // The code 0 gives 0 as well.
  char16_t Decode(uint16_t code) const { return decode_[code]; }

 private:
  constexpr CodePage932();
  constexpr void FillDecodeTable();
  constexpr void FillEncodeTable();

  char16_t decode_[0x10000] = {};
  uint16_t encode_[0x10000] = {};
};

// UTF-8 to Shift_JIS; a character that the code page lacks and each byte that is no valid UTF-8
// become "?".
SjisText EncodeSjis(std::string_view utf8);

// Shift_JIS to UTF-8; each byte of what is no character becomes U+FFFD.
std::string DecodeSjis(SjisView text);

}  // namespace ledrix
