// The converters of UTF-8, UTF-7 and UTF-16. A byte-order mark at the start of the first line is no
// text.
#pragma once

#include <string>
#include <string_view>

#include "charset/charset_name.h"
#include "charset/line_converter.h"

namespace ledrix {

// A lead byte and the continuation bytes that could still have belonged to a character are one
// invalid sequence.
class Utf8Converter : public LineConverter {
 public:
  Utf8Converter() : LineConverter(ConvertKnownUtf8, "\n") {}
  void ConvertLine(std::string_view bytes, SjisWriter& writer) override;
};

// Half a surrogate pair, and an odd byte at the end, is an invalid sequence.
class Utf16Converter : public LineConverter {
 public:
  explicit Utf16Converter(ByteOrder order);
  void ConvertLine(std::string_view bytes, SjisWriter& writer) override;

 private:
  ByteOrder order_;
};

// "+-" is a plus sign; before anything else that opens no run "+" is an invalid sequence, and so
// are half a surrogate pair and bits left over in a run.
class Utf7Converter : public LineConverter {
 public:
  void ConvertLine(std::string_view bytes, SjisWriter& writer) override;

 private:
  // Converts from the "+" at a position on and returns where the text goes on.
  size_t ConvertRun(std::string_view bytes, size_t plus, SjisWriter& writer);

  std::u16string units_;
};

}  // namespace ledrix
