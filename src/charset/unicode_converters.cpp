#include "charset/unicode_converters.h"

#include <utility>

#include "charset/code_sequences.h"
#include "charset/utf7_run.h"
#include "text/utf8.h"

namespace ledrix {
namespace {

// UTF-16 units into characters. The bytes of half a surrogate pair are recorded high byte first,
// whatever the order of the file.
class Utf16Joiner {
 public:
  explicit Utf16Joiner(SjisWriter& writer) : writer_(writer) {}

  void Put(char16_t unit) {
    const bool low = unit >= 0xDC00 && unit <= 0xDFFF;
    if (high_ != 0) {
      if (low) {
        const char32_t upper_bits = std::exchange(high_, 0) - 0xD800u;
        writer_.PutCharacter(0x10000 + (upper_bits << 10) + (unit - 0xDC00u));
        return;
      }
      Finish();
    }
    if (unit >= 0xD800 && unit <= 0xDBFF) {
      high_ = unit;
    } else if (low) {
      PutHalf(unit);
    } else {
      writer_.PutCharacter(unit);
    }
  }
  bool HasHalf() const { return high_ != 0; }
  void Finish() {
    if (high_ != 0) PutHalf(std::exchange(high_, 0));
  }

 private:
  void PutHalf(char16_t unit) {
    const char bytes[] = {static_cast<char>(unit >> 8), static_cast<char>(unit & 0xFF)};
    writer_.PutInvalid({bytes, sizeof bytes});
  }

  SjisWriter& writer_;
  char16_t high_ = 0;
};

}  // namespace

void Utf8Converter::ConvertLine(std::string_view bytes, SjisWriter& writer) {
  for (size_t i = 0; i < bytes.size();) {
    i += writer.PutKnown(bytes.substr(i), ConvertKnownUtf8);
    if (i == bytes.size()) break;
    const Utf8Char c = DecodeUtf8(bytes, i);
    if (c.valid) {
      writer.PutCharacter(c.character);
      i += c.size;
    } else {
      const size_t size = Utf8Sequence(bytes, i).size;
      writer.PutInvalid(bytes.substr(i, size));
      i += size;
    }
  }
}

Utf16Converter::Utf16Converter(ByteOrder order)
    : LineConverter(order == ByteOrder::kBigEndian ? ConvertKnownUtf16Be : ConvertKnownUtf16Le,
                    order == ByteOrder::kBigEndian ? std::string_view("\0\n", 2)
                                                   : std::string_view("\n\0", 2)),
      order_(order) {}

void Utf16Converter::ConvertLine(std::string_view bytes, SjisWriter& writer) {
  const bool big = order_ == ByteOrder::kBigEndian;
  const size_t high = big ? 0 : 1;  // of a unit's two bytes
  Utf16Joiner joiner(writer);
  size_t i = 0;
  while (i + 1 < bytes.size()) {
    if (!joiner.HasHalf()) {
      i += writer.PutKnown(bytes.substr(i), big ? ConvertKnownUtf16Be : ConvertKnownUtf16Le);
      if (i + 1 >= bytes.size()) break;
    }
    const auto upper = static_cast<unsigned char>(bytes[i + high]);
    const auto lower = static_cast<unsigned char>(bytes[i + 1 - high]);
    joiner.Put(static_cast<char16_t>(upper * 256 + lower));
    i += 2;
  }
  joiner.Finish();
  if (i < bytes.size()) writer.PutInvalid(bytes.substr(i));
}

void Utf7Converter::ConvertLine(std::string_view bytes, SjisWriter& writer) {
  for (size_t i = 0; i < bytes.size();) {
    const size_t ascii = AsciiRun(bytes.substr(0, bytes.find('+', i)), i);
    writer.PutAscii(bytes.substr(i, ascii));
    i += ascii;
    if (i == bytes.size()) break;
    if (bytes[i] == '+') {
      i = ConvertRun(bytes, i, writer);
    } else {
      writer.PutInvalid(bytes.substr(i++, 1));
    }
  }
}

size_t Utf7Converter::ConvertRun(std::string_view bytes, size_t plus, SjisWriter& writer) {
  const Utf7Run run = ReadUtf7Run(bytes, plus + 1, units_);
  const size_t end = plus + 1 + run.size + (run.closed ? 1 : 0);
  if (run.size == 0 && run.closed) {
    writer.PutAscii("+");
  } else if (run.size == 0) {
    writer.PutInvalid("+");
  } else {
    Utf16Joiner joiner(writer);
    for (const char16_t unit : units_) joiner.Put(unit);
    joiner.Finish();
    if (run.bits_left) writer.PutInvalid(bytes.substr(plus, end - plus));
  }
  return end;
}

}  // namespace ledrix
