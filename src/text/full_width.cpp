#include "text/full_width.h"

namespace ledrix {
namespace {

// The full-width forms of U+FF61 to U+FF9F.
constexpr std::u32string_view kFullWidthKatakana =
    U"。「」、・ヲァィゥェォャュョッーアイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホ"
    U"マミムメモヤユヨラリルレロワン゛゜";
constexpr char32_t kFirstHalfWidth = 0xFF61;
constexpr char32_t kLastHalfWidth = 0xFF9F;
constexpr char32_t kSoundMark = 0xFF9E;
constexpr char32_t kHalfSoundMark = 0xFF9F;

char32_t FullWidthForm(char32_t c) {
  if (c == U' ') return 0x3000;
  if (c >= 0x21 && c <= 0x7E) return c + 0xFEE0;
  if (c >= kFirstHalfWidth && c <= kLastHalfWidth) return kFullWidthKatakana[c - kFirstHalfWidth];
  return c;
}

// The katakana letter that takes in the sound mark behind it, or 0.
char32_t WithSoundMark(char32_t half_width, char32_t mark) {
  const char32_t full_width = FullWidthForm(half_width);
  const bool ha_row = half_width >= 0xFF8A && half_width <= 0xFF8E;
  if (mark == kHalfSoundMark) return ha_row ? full_width + 2 : 0;
  if (mark != kSoundMark) return 0;
  if (half_width == 0xFF73) return 0x30F4;  // ヴ
  const bool ka_to_to = half_width >= 0xFF76 && half_width <= 0xFF84;
  return ka_to_to || ha_row ? full_width + 1 : 0;
}

}  // namespace

FullWidthChar FullWidthAt(std::u32string_view text, size_t position) {
  const char32_t c = text[position];
  const char32_t marked = position + 1 < text.size() ? WithSoundMark(c, text[position + 1]) : U'\0';
  return marked != 0 ? FullWidthChar{marked, 2} : FullWidthChar{FullWidthForm(c), 1};
}

std::u32string ToFullWidth(const std::u32string& text) {
  std::u32string wide;
  wide.reserve(text.size());
  for (size_t i = 0; i < text.size();) {
    const FullWidthChar character = FullWidthAt(text, i);
    wide += character.character;
    i += character.taken;
  }
  return wide;
}

}  // namespace ledrix
