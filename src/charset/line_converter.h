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

  // Appends the text of the next lines, of which there are `count`, their ends included, as far as
  // nothing is lost; returns the bytes of the lines that were converted, 0 when the first was not.
  // REQUIRES: each line, the last one too, ends in CR LF.
  bool ConvertsManyLines() const { return known_run_ != nullptr; }
  size_t ConvertLines(std::string_view lines, SjisText& text);

  // A line of UTF-16 of an odd number of bytes was cut within a unit, so what ended it belongs to
  // the invalid sequence at its end.
  void NoteCutWithinUnit(std::string_view end_bytes) { loss_.AddToLast(end_bytes); }

  // What the lines so far lost.
  const ConversionLoss& loss() const { return loss_; }

  virtual void ConvertLine(std::string_view bytes, SjisWriter& writer) = 0;

 protected:
  // `known_run` converts runs in which line ends are CR and LF bytes.
  explicit LineConverter(KnownRunConverter known_run) : known_run_(known_run) {}

 private:
  const KnownRunConverter known_run_ = nullptr;
  ConversionLoss loss_;
};

// True when a charset of this name can be converted. An empty or blank name and one that holds "/"
// cannot: it becomes part of a path.
bool IsCharsetAvailable(std::string_view name);

}  // namespace ledrix
