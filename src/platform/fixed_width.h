// Texts laid into a fixed number of Shift_JIS bytes, and how numbers are written.
#pragma once

#include <cstdint>
#include <string>

#include "platform/output_file.h"
#include "text/sjis_text.h"

namespace ledrix {

// Writes `count` half-width spaces.
void WriteSpaces(OutputFile& file, size_t count);

// Writes a text as one line, with CR LF.
void WriteLine(OutputFile& file, SjisView text);

// Writes a text as one or more lines of exactly `width` bytes, padded with spaces and cut without
// splitting a double-byte character. REQUIRES: width >= 2.
void WriteFixedWidth(OutputFile& file, SjisView text, size_t width);

// The text padded with spaces to `width` bytes; a longer one is cut there, character or not.
SjisText PadOrCut(SjisView text, size_t width);

// "#,##0": decimal with a comma before every third digit from the right; "-" when negative.
std::string FormatThousands(int64_t number);
// "+#,##0" from 0 on, "#,##0" below.
std::string FormatSignedThousands(int64_t number);

}  // namespace ledrix
