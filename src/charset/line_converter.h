// Turns lines of a named charset into Shift_JIS.
//
// Shift_JIS, EUC-JP, ISO-2022-JP, UTF-8, UTF-7 and UNICODE (UTF-16, little-endian) are converted
// here; "_autodetect" decides line by line; any other name is served by the C library. Names are
// taken without regard to letter case.
//
// An invalid sequence, and a character that Shift_JIS lacks, becomes "?" and loses nothing else of
// its line. Where Shift_JIS has several codes for a character the one that Windows chooses is
// written, whatever the charset.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "text/sjis_text.h"

namespace ledrix {

// Where a line stands in its file: a byte-order mark at the start of the first line is no text.
enum class LinePosition { kFirst, kLater };

class LineConverter {
 public:
  // Returns null when the charset is not available.
  static std::unique_ptr<LineConverter> Make(std::string_view charset);

  LineConverter() = default;
  LineConverter(const LineConverter&) = delete;
  LineConverter& operator=(const LineConverter&) = delete;
  virtual ~LineConverter() = default;

  // Appends the text of one line, given without its end. Every line begins in the charset's first
  // state.
  virtual void Convert(std::string_view bytes, LinePosition position, SjisText& text) = 0;
};

// True when a charset of this name can be converted. An empty or blank name and one that holds "/"
// cannot: it becomes part of a file name.
bool IsCharsetAvailable(std::string_view name);

}  // namespace ledrix
