#include "listing/line_text.h"

#include "text/code_page_932.h"
#include "text/utf8.h"

namespace ledrix {
namespace {

using modJudgeCode::SureCode;

constexpr char32_t kByteOrderMark = 0xFEFF;

bool IsWide(char32_t c) {
  return (c >= 0x1100 && c <= 0x115F) || (c >= 0x2E80 && c <= 0xA4CF) ||
         (c >= 0xAC00 && c <= 0xD7A3) || (c >= 0xF900 && c <= 0xFAFF) ||
         (c >= 0xFE30 && c <= 0xFE4F) || (c >= 0xFF00 && c <= 0xFF60) ||
         (c >= 0xFFE0 && c <= 0xFFE6) || (c >= 0x1F000 && c <= 0x1FAFF) ||
         (c >= 0x20000 && c <= 0x3FFFD);
}

void Put(char32_t character, LineText& text) {
  text.push_back({character, ColumnsOf(character)});
}

void DropMark(LineText& text) {
  if (!text.empty() && text.front().character == kByteOrderMark) text.erase(text.begin());
}

}  // namespace

size_t WidthOf(const LineText& text) {
  size_t width = 0;
  for (const TextChar& c : text) width += c.columns;
  return width;
}

uint8_t ColumnsOf(char32_t character) {
  if (character < 0x80) return 1;
  const uint16_t code = CodePage932::Get().Encode(character);
  if (code != 0) return code > 0xFF ? 2 : 1;
  return IsWide(character) ? 2 : 1;
}

char32_t VisibleForm(char32_t character) {
  if (character < 0x20) return 0x2400 + character;
  if (character == 0x7F) return 0x2421;
  // Those of Unicode have no symbols, and marks that turn the direction of a text would move it.
  const bool is_control = (character >= 0x80 && character < 0xA0) ||
                          (character >= 0x200B && character <= 0x200F) ||
                          (character >= 0x2028 && character <= 0x202E) ||
                          (character >= 0x2066 && character <= 0x2069) || character == 0xFEFF;
  return is_control ? kReplacementCharacter : character;
}

std::string ToUtf8(const LineText& text) {
  std::string utf8;
  for (const TextChar& c : text) AppendUtf8(utf8, c.character);
  return utf8;
}

void DecodeSjisLine(SjisView line, LineText& text) {
  const CodePage932& table = CodePage932::Get();
  for (size_t at = 0; at < line.size();) {
    const unsigned char byte = line.At(at);
    if (byte < 0x80) {
      text.push_back({byte, 1});
      ++at;
      continue;
    }
    const bool is_double = SjisCharSize(line, at) == 2;
    const char16_t wide = is_double
                              ? table.Decode(static_cast<uint16_t>(byte * 256u + line.At(at + 1)))
                              : char16_t{0};
    const char16_t single = wide == 0 ? table.Decode(byte) : char16_t{0};
    if (wide != 0) {
      text.push_back({wide, 2});
      at += 2;
    } else if (is_double) {
      text.push_back({kReplacementCharacter, 2});
      at += 2;
    } else {
      text.push_back({single != 0 ? char32_t{single} : kReplacementCharacter, 1});
      ++at;
    }
  }
}

LineText DecodeRow(const ListingShape& shape, SjisView line) {
  LineText text;
  const size_t width = shape.format.side_width;
  if (shape.style.vertical || line.size() != shape.format.listing_width() ||
      KindOfRow(shape, line) == RowKind::kOther) {
    DecodeSjisLine(line, text);
    return text;
  }
  DecodeSjisLine(line.First(width), text);
  DecodeSjisLine(line.From(width).First(kMarkWidth), text);
  DecodeSjisLine(line.From(width + kMarkWidth), text);
  return text;
}

LineText DecodeUtf8Line(std::string_view line) {
  LineText text;
  text.reserve(line.size());
  for (size_t at = 0; at < line.size();) {
    const Utf8Char c = DecodeUtf8(line, at);
    Put(c.valid ? c.character : kReplacementCharacter, text);
    at += c.size;
  }
  return text;
}

LineDecoder::LineDecoder(SureCode code) : code_(code) {
  if (code == SureCode::kEuc || code == SureCode::kJis) {
    converter_ = LineConverter::Make(modJudgeCode::CharsetNameOf(code));
  }
  if (code == SureCode::kUtf7) iconv_ = IconvDecoder::Open("UTF-7");
}

LineText LineDecoder::Decode(std::string_view bytes, bool is_first) {
  LineText text;
  text.reserve(bytes.size());
  if (converter_ != nullptr) {
    SjisText converted;
    converter_->Convert(bytes, LinePosition::kLater, converted);
    DecodeSjisLine(converted, text);
  } else if (code_ == SureCode::kUtf8) {
    text = DecodeUtf8Line(bytes);
  } else if (code_ == SureCode::kUtf16Le || code_ == SureCode::kUtf16Be) {
    DecodeUtf16Line(bytes, text);
  } else if (iconv_ != nullptr) {
    DecodeByIconv(bytes, text);
  } else {
    DecodeSjisLine(SjisView::FromBytes(bytes), text);
  }
  if (is_first) DropMark(text);
  return text;
}

void LineDecoder::DecodeUtf16Line(std::string_view bytes, LineText& text) const {
  const bool big = code_ == SureCode::kUtf16Be;
  const auto unit = [&](size_t at) {
    const auto first = static_cast<unsigned char>(bytes[at]);
    const auto second = static_cast<unsigned char>(bytes[at + 1]);
    return static_cast<char32_t>(big ? first * 256u + second : second * 256u + first);
  };
  size_t at = 0;
  for (; at + 1 < bytes.size(); at += 2) {
    const char32_t high = unit(at);
    const bool is_high = high >= 0xD800 && high < 0xDC00;
    const char32_t low = is_high && at + 3 < bytes.size() ? unit(at + 2) : 0;
    if (low >= 0xDC00 && low < 0xE000) {
      Put(0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00), text);
      at += 2;
    } else {
      Put(high >= 0xD800 && high < 0xE000 ? kReplacementCharacter : high, text);
    }
  }
  if (at < bytes.size()) Put(kReplacementCharacter, text);
}

void LineDecoder::DecodeByIconv(std::string_view bytes, LineText& text) {
  iconv_->Begin();
  std::u32string characters;
  while (!bytes.empty()) {
    const IconvDecoder::Step step = iconv_->Decode(bytes, characters);
    for (size_t i = 0; i < step.invalid; ++i) characters += kReplacementCharacter;
    if (step.decoded + step.invalid == 0) break;
    bytes.remove_prefix(step.decoded + step.invalid);
  }
  for (const char32_t c : characters) Put(c, text);
}

}  // namespace ledrix
