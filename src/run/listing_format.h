// The fixed texts of a listing: what its writer chooses once per pair from the options, and what
// its reader finds in a finished one.
//
// Widths are Shift_JIS bytes. W is the width of one side. A body of the side-by-side layout has
// lines of 2W + 6 bytes:
//
//   row       = side mark side              side = [number " "] text, filled up with spaces to W
//   marker    = ruler "(" ("S" | "E") block ")" ruler
//   omission  = OmissionLine                stands for unchanged lines
//   closing   = ruler, six spaces, ruler    the last line of header and body
//
// and of the vertical layout, whose texts are as long as they are:
//
//   row       = mark [number " "] text
//   marker    = "(" ("S" | "E") block ")" ruler
//   closing   = six spaces, ruler
#pragma once

#include "settings/compare_options.h"
#include "text/sjis_text.h"

namespace ledrix {

inline constexpr size_t kMarkWidth = 6;
// What a line number takes of each side: four digits and a space.
inline constexpr size_t kLineNoWidth = 5;
// Of a date and time in the header: "yyyy/mm/dd hh:mm".
inline constexpr size_t kStampWidth = 16;
// A side-by-side line takes its first row and those that continue it; what is longer is not shown.
inline constexpr size_t kMostRowsOfLine = 10;

// Each 6 bytes.
struct ListingMarks {
  SjisText changed;
  SjisText added;
  SjisText deleted;
  SjisText continued;  // rows after the first, and the new line of a vertical change
  SjisText unchanged;
};

// What decides those texts.
struct ListingStyle {
  size_t side_width = 0;  // W
  bool vertical = false;
  bool simple = false;  // half-width text alone
  bool line_numbers = false;
};

struct ListingFormat {
  explicit ListingFormat(const ListingStyle& style);
  explicit ListingFormat(const CompareOptions& options);

  size_t side_width;  // W
  size_t text_width;  // W without the line number
  ListingMarks marks;
  SjisText omission_line;  // stands for unchanged lines that are not shown
  SjisText ruler;          // W bytes, 2W in the vertical layout
  SjisText left_ruler;     // the ruler, or empty in the vertical layout
  SjisText ruler_line;     // left ruler, six spaces, ruler

  size_t listing_width() const { return 2 * side_width + kMarkWidth; }
};

// What a row shows of a text: some bytes, spaces up to the width, and what is left for the next
// row.
struct WrappedPiece {
  SjisView bytes;
  size_t padding;
  SjisView rest;
};

// The next piece of a text for a row of `width` bytes. Without `wrap` the rest is dropped; with it
// a double-byte character that the row end would split goes to the next row whole.
WrappedPiece WrapPiece(SjisView text, size_t width, bool wrap);

// The number with at least four digits, of which the last four are returned.
SjisText FormatLineNo(int64_t number);

// "(S001)", "(E012)": the kind and the block's number with at least three digits.
SjisText BlockMarkerText(char kind, int64_t number);

}  // namespace ledrix
