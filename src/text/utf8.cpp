#include "text/utf8.h"

#include <algorithm>
#include <iterator>

namespace ledrix {
namespace {

// Bytes of the sequence a lead byte opens; 0 for a byte that opens none.
size_t SequenceSize(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead <= 0xDF) return 2;
  if (lead >= 0xE0 && lead <= 0xEF) return 3;
  if (lead >= 0xF0 && lead <= 0xF4) return 4;
  return 0;
}

bool IsScalarValue(char32_t c, size_t size) {
  constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
  return c >= kSmallest[size] && c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF);
}

// Every `step`-th character from `first` to `last` has another case, `distance` away from it.
struct CaseRun {
  char32_t first;
  char32_t last;
  char32_t step;
  int distance;
};

constexpr CaseRun kUpperCase[] = {
#include "text/upper_case_table.inc"
};
constexpr CaseRun kLowerCase[] = {
#include "text/lower_case_table.inc"
};

// The runs stand in order and do not overlap.
template <size_t kSize>
char32_t InOtherCase(const CaseRun (&runs)[kSize], char32_t character) {
  const CaseRun* const run =
      std::lower_bound(std::begin(runs), std::end(runs), character,
                       [](const CaseRun& r, char32_t c) { return r.last < c; });
  if (run == std::end(runs) || character < run->first) return character;
  if ((character - run->first) % run->step != 0) return character;
  return character + static_cast<char32_t>(run->distance);
}

}  // namespace

bool IsAscii(std::string_view text) {
  unsigned char all = 0;
  for (const char c : text)
    all |= static_cast<unsigned char>(c);  // the compiler takes many at once
  return all < 0x80;
}

Utf8Char DecodeUtf8(std::string_view text, size_t position) {
  const auto lead = static_cast<unsigned char>(text[position]);
  const Utf8Char invalid{lead, 1, false};
  const size_t size = SequenceSize(lead);
  if (size == 1) return {lead, 1, true};
  if (size == 0 || position + size > text.size()) return invalid;
  char32_t character = lead & (0x7Fu >> size);
  for (size_t i = 1; i < size; ++i) {
    const auto b = static_cast<unsigned char>(text[position + i]);
    if ((b & 0xC0) != 0x80) return invalid;
    character = (character << 6) | (b & 0x3Fu);
  }
  if (!IsScalarValue(character, size)) return invalid;
  return {character, size, true};
}

void AppendUtf8(std::string& text, char32_t c) {
  const auto add = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
  if (c < 0x80) {
    add(c);
  } else if (c < 0x800) {
    add(0xC0 | (c >> 6));
    add(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    add(0xE0 | (c >> 12));
    add(0x80 | ((c >> 6) & 0x3F));
    add(0x80 | (c & 0x3F));
  } else {
    add(0xF0 | (c >> 18));
    add(0x80 | ((c >> 12) & 0x3F));
    add(0x80 | ((c >> 6) & 0x3F));
    add(0x80 | (c & 0x3F));
  }
}

std::u32string Utf8Characters(std::string_view text) {
  std::u32string characters;
  characters.reserve(text.size());
  for (size_t position = 0; position < text.size();) {
    const Utf8Char c = DecodeUtf8(text, position);
    characters.push_back(c.valid ? c.character : 0xDC00 + c.character);
    position += c.size;
  }
  return characters;
}

char32_t ToUpper(char32_t character) {
  if (character < 0x80)
    return character >= 'a' && character <= 'z' ? character - ('a' - 'A') : character;
  return InOtherCase(kUpperCase, character);
}

char32_t ToLower(char32_t character) {
  if (character < 0x80)
    return character >= 'A' && character <= 'Z' ? character + ('a' - 'A') : character;
  return InOtherCase(kLowerCase, character);
}

}  // namespace ledrix
