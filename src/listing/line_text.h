// The lines of a text as characters in columns.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "charset/line_converter.h"
#include "charset/sure_judgement.h"
#include "listing/listing_shape.h"
#include "text/iconv_decoder.h"

namespace ledrix {

// A character of Unicode and the columns that it takes: two for a full-width one, else one. What is
// no character is U+FFFD, one column a byte.
struct TextChar {
  char32_t character = 0;
  uint8_t columns = 1;
};
using LineText = std::vector<TextChar>;

// All columns of a line.
size_t WidthOf(const LineText& text);

// Columns of a character: two for one of two bytes in Shift_JIS, and for one that Shift_JIS lacks
// where Unicode calls it wide.
uint8_t ColumnsOf(char32_t character);

// The printable symbol of a control character (U+2400 and on), any other character unchanged.
char32_t VisibleForm(char32_t character);

std::string ToUtf8(const LineText& text);

// Decodes Shift_JIS, each byte one column. A row of a listing is decoded part by part, so that
// half a character that ends a side takes nothing of the mark.
void DecodeSjisLine(SjisView line, LineText& text);
LineText DecodeRow(const ListingShape& shape, SjisView line);

LineText DecodeUtf8Line(std::string_view line);

// Decodes the lines of a text in any of the codes that are judged.
class LineDecoder {
 public:
  explicit LineDecoder(modJudgeCode::SureCode code);

  // Bytes of a line without its end. `is_first`: a byte-order mark is left out.
  LineText Decode(std::string_view bytes, bool is_first);

 private:
  void DecodeUtf16Line(std::string_view bytes, LineText& text) const;
  void DecodeByIconv(std::string_view bytes, LineText& text);

  modJudgeCode::SureCode code_;
  std::unique_ptr<LineConverter> converter_;  // to Shift_JIS
  std::unique_ptr<IconvDecoder> iconv_;
};

}  // namespace ledrix
