// Turns lines of a named charset into Shift_JIS.
//
// Shift_JIS, EUC-JP, ISO-2022-JP, UTF-8, UTF-7 and UTF-16 are converted here, under any of their
// usual names (charset_name.h); "_autodetect" decides line by line; any other name is served by the
// C library. Names are taken without regard to letter case.
//
// An invalid sequence, and a character that Shift_JIS lacks, becomes "?" and loses nothing else of
// its line; it is recorded. Where Shift_JIS has several codes for a character the one that Windows
// chooses is written, whatever the charset.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "charset/charset_name.h"
#include "charset/conversion_loss.h"
#include "charset/sjis_writer.h"
#include "text/sjis_text.h"

namespace ledrix {

// Bytes read and written, and the lines that they are.
struct ConvertedLines {
  size_t read = 0;
  size_t written = 0;
  int64_t lines = 0;
  bool is_good = false;  // hardly anything was converted in vain
};

class LineConverter {
 public:
  // Returns null when the charset is not available. `order` holds for a name of UTF-16 that tells
  // none.
  static std::unique_ptr<LineConverter> Make(std::string_view charset,
                                             ByteOrder order = ByteOrder::kLittleEndian);

  LineConverter() = default;
  LineConverter(const LineConverter&) = delete;
  LineConverter& operator=(const LineConverter&) = delete;
  virtual ~LineConverter() = default;

  // Appends the text of the next line, given without its end. Every line begins in the charset's
  // first state. REQUIRES: every line of the file is given, the empty ones too; their number
  // counts.
  void Convert(std::string_view bytes, LinePosition position, SjisText& text) {
    loss_.NextLine();
    SjisWriter writer(position, text, loss_);
    ConvertLine(bytes, writer);
  }

  // Writes the text of the next `most` lines or fewer, their ends included: of whole lines that CR
  // LF ends, as long as nothing is lost. REQUIRES: a line begins with the bytes; `out` has room for
  // bytes.size() + kKnownRunSlack.
  ConvertedLines ConvertLines(std::string_view bytes, int64_t most, char* out);
  // The bytes of a line feed where ConvertLines is of use, else none.
  std::string_view line_feed() const { return line_feed_; }

  // A line of UTF-16 of an odd number of bytes was cut within a unit, so what ended it belongs to
  // the invalid sequence at its end.
  void NoteCutWithinUnit(std::string_view end_bytes) { loss_.AddToLast(end_bytes); }

  // What the lines so far lost, and what is to be kept of it.
  const ConversionLoss& loss() const { return loss_; }
  ConversionLoss& loss() { return loss_; }

  virtual void ConvertLine(std::string_view bytes, SjisWriter& writer) = 0;

 protected:
  // `line_feed` as `known_run` reads it, one or two bytes.
  LineConverter(KnownRunConverter known_run, std::string_view line_feed)
      : known_run_(known_run), line_feed_(line_feed) {}

 private:
  const KnownRunConverter known_run_ = nullptr;
  const std::string_view line_feed_;
  ConversionLoss loss_;
};

// True when a charset of this name can be converted. An empty or blank name and one that holds "/"
// cannot: it becomes part of a path.
bool IsCharsetAvailable(std::string_view name);

}  // namespace ledrix
