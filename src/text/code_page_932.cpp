#include "text/code_page_932.h"

#include <iconv.h>

#include <array>
#include <memory>

#include "text/utf8.h"

namespace ledrix {
namespace {

// The single bytes that Windows maps to characters of their own and the C library refuses.
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

// What iconv_open returns when it fails.
const iconv_t kNoCodePage = reinterpret_cast<iconv_t>(-1);  // NOLINT(performance-no-int-to-ptr)

// Decodes one code of one or two bytes; 0 when the converter refuses it.
char16_t DecodeOne(iconv_t converter, const char* bytes, size_t size) {
  iconv(converter, nullptr, nullptr, nullptr, nullptr);
  char* in = const_cast<char*>(bytes);
  size_t in_left = size;
  char16_t character = 0;
  char* out = reinterpret_cast<char*>(&character);
  size_t out_left = sizeof character;
  const size_t result = iconv(converter, &in, &in_left, &out, &out_left);
  return result == static_cast<size_t>(-1) || out_left != 0 ? char16_t{0} : character;
}

}  // namespace

const CodePage932& CodePage932::Get() {
  static const std::unique_ptr<const CodePage932> kTable(new CodePage932());
  return *kTable;
}

CodePage932::CodePage932() {
  LoadDecodeTable();
  LoadEncodeTable();
}

void CodePage932::LoadDecodeTable() {
  for (int b = 0; b < 0x80; ++b) decode_[b] = static_cast<char16_t>(b);
  for (const SingleByte& single : kWindowsSingleBytes) decode_[single.code] = single.character;
  const iconv_t converter = iconv_open("UTF-16LE", "CP932");
  if (converter == kNoCodePage) return;  // ASCII is all that is left then
  for (int b = 0xA1; b <= 0xDF; ++b) decode_[b] = static_cast<char16_t>(0xFF61 + (b - 0xA1));
  for (int lead = 0x81; lead <= 0xFC; ++lead) {
    if (!IsSjisLead(static_cast<unsigned char>(lead))) continue;
    for (int trail = 0x40; trail <= 0xFC; ++trail) {
      if (!IsSjisTrail(static_cast<unsigned char>(trail))) continue;
      const char bytes[2] = {static_cast<char>(lead), static_cast<char>(trail)};
      decode_[lead * 256 + trail] = DecodeOne(converter, bytes, 2);
    }
  }
  iconv_close(converter);
}

void CodePage932::LoadEncodeTable() {
  const auto add = [this](int first_lead, int last_lead) {
    for (int code = first_lead * 256; code < (last_lead + 1) * 256; ++code) {
      const char16_t character = decode_[code];
      if (character != 0 && encode_[character] == 0) {
        encode_[character] = static_cast<uint16_t>(code);
      }
    }
  };
  add(0x00, 0xEC);  // single bytes, JIS X 0208 and NEC row 13
  add(0xEF, 0xFC);  // user-defined characters and the IBM extension
  add(0xED, 0xEE);  // the NEC-selected duplicates of that extension
  for (const Spelling& spelling : kFurtherSpellings) {
    if (encode_[spelling.character] == 0) encode_[spelling.character] = spelling.code;
  }
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
