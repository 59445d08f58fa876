#include "text/code_page_932.h"

#include <array>

#include "text/utf8.h"

namespace ledrix {
namespace {

// The lead bytes whose characters stand in the table; F0-F9, the user-defined ones, do not.
struct LeadRange {
  int first;
  int last;
};
constexpr std::array<LeadRange, 3> kTableLeads = {{{0x81, 0x9F}, {0xE0, 0xEF}, {0xFA, 0xFC}}};
constexpr size_t kTrails = 188;

constexpr char16_t kDoubleBytes[] = {
#include "text/code_page_932_table.inc"
};
static_assert(std::size(kDoubleBytes) == 50 * kTrails);

// The single bytes beside ASCII and half-width katakana.
struct SingleByte {
  uint8_t code;
  char16_t character;
};
constexpr std::array<SingleByte, 5> kWindowsSingleBytes = {
    {{0x80, 0x0080}, {0xA0, 0xF8F0}, {0xFD, 0xF8F1}, {0xFE, 0xF8F2}, {0xFF, 0xF8F3}}};

// Further Unicode spellings of characters that the code page holds once.
struct Spelling {
  char16_t character;
  uint16_t code;
};
constexpr std::array<Spelling, 9> kFurtherSpellings = {{{0x301C, 0x8160},
                                                        {0x2016, 0x8161},
                                                        {0x2212, 0x817C},
                                                        {0x00A2, 0x8191},
                                                        {0x00A3, 0x8192},
                                                        {0x00AC, 0x81CA},
                                                        {0x2014, 0x815C},
                                                        {0x00A5, 0x5C},
                                                        {0x203E, 0x7E}}};

// The code of a lead byte and a trail byte counted from 0.
constexpr int CodeAt(int lead, size_t trail) {
  return lead * 256 + 0x40 + static_cast<int>(trail) + (trail >= 0x3F ? 1 : 0);
}

}  // namespace

constexpr CodePage932::CodePage932() {
  FillDecodeTable();
  FillEncodeTable();
}

constexpr void CodePage932::FillDecodeTable() {
  for (int b = 0; b < 0x80; ++b) decode_[b] = static_cast<char16_t>(b);
  for (int b = 0xA1; b <= 0xDF; ++b) decode_[b] = static_cast<char16_t>(0xFF61 + (b - 0xA1));
  for (const SingleByte& single : kWindowsSingleBytes) decode_[single.code] = single.character;
  size_t place = 0;
  for (const LeadRange& leads : kTableLeads) {
    for (int lead = leads.first; lead <= leads.last; ++lead) {
      for (size_t i = 0; i < kTrails; ++i) decode_[CodeAt(lead, i)] = kDoubleBytes[place++];
    }
  }
  char16_t user_defined = 0xE000;
  for (int lead = 0xF0; lead <= 0xF9; ++lead) {
    for (size_t i = 0; i < kTrails; ++i) decode_[CodeAt(lead, i)] = user_defined++;
  }
}

constexpr void CodePage932::FillEncodeTable() {
  const auto add = [this](int code) {
    const char16_t character = decode_[code];
    if (character != 0 && encode_[character] == 0) encode_[character] = static_cast<uint16_t>(code);
  };
  for (int b = 0; b < 0x100; ++b) add(b);
  // JIS X 0208 and NEC row 13; user-defined characters and the IBM extension; the NEC-selected
  // duplicates of that extension.
  constexpr std::array<LeadRange, 4> kByChoice = {
      {{0x81, 0x9F}, {0xE0, 0xEC}, {0xEF, 0xFC}, {0xED, 0xEE}}};
  for (const LeadRange& leads : kByChoice) {
    for (int lead = leads.first; lead <= leads.last; ++lead) {
      for (size_t i = 0; i < kTrails; ++i) add(CodeAt(lead, i));
    }
  }
  for (const Spelling& spelling : kFurtherSpellings) {
    if (encode_[spelling.character] == 0) encode_[spelling.character] = spelling.code;
  }
}

const CodePage932& CodePage932::Get() {
  static constexpr CodePage932 kTable;
  return kTable;
}

SjisText EncodeSjis(std::string_view utf8) {
  if (IsAscii(utf8)) return SjisText::FromBytes(std::string(utf8));
  const CodePage932& table = CodePage932::Get();
  std::string bytes;
  bytes.reserve(utf8.size());
  for (size_t position = 0; position < utf8.size();) {
    if (static_cast<unsigned char>(utf8[position]) < 0x80) {
      bytes.push_back(utf8[position++]);
      continue;
    }
    const Utf8Char c = DecodeUtf8(utf8, position);
    position += c.size;
    const uint16_t code = c.valid ? table.Encode(c.character) : uint16_t{0};
    if (code > 0xFF) bytes.push_back(static_cast<char>(code >> 8));
    bytes.push_back(code == 0 ? '?' : static_cast<char>(code & 0xFF));
  }
  return SjisText::FromBytes(std::move(bytes));
}

std::string DecodeSjis(SjisView text) {
  if (IsAscii(text.bytes())) return std::string(text.bytes());
  const CodePage932& table = CodePage932::Get();
  std::string utf8;
  utf8.reserve(text.size() * 2);
  for (size_t position = 0; position < text.size();) {
    const size_t size = SjisCharSize(text, position);
    const int code =
        size == 2 ? text.At(position) * 256 + text.At(position + 1) : text.At(position);
    const char16_t character = table.Decode(static_cast<uint16_t>(code));
    if (character != 0 || code == 0) {
      AppendUtf8(utf8, character);
    } else {
      for (size_t i = 0; i < size; ++i) AppendUtf8(utf8, kReplacementCharacter);
    }
    position += size;
  }
  return utf8;
}

}  // namespace ledrix
