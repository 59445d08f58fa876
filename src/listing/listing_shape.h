// What a text's first lines tell of the listing that it is, and what its rows are.
//
// The grammar of a body stands in run/listing_format.h. Above it, every line 2W + 6 bytes:
//
//   box     = three lines of conditions, FILE in one line or two, STATUS line, ruler line
//   simple  = one line of conditions, the files in one line or two, ruler line
//
// Columns are bytes of Shift_JIS, counted from 0 unless said otherwise.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "run/listing_format.h"
#include "run/side.h"
#include "settings/compare_options.h"
#include "text/sjis_text.h"

namespace ledrix {

// A compared file as the header shows it.
struct HeaderFile {
  SjisText path;
  bool is_whole = true;  // false: the header may not show all of the path
  std::string stamp;     // "yyyy/mm/dd hh:mm"
};

// How its lines were compared, as far as the header tells; letter case it does not tell.
struct HeaderRules {
  int first_column = 1;  // from 1
  int last_column = 9999;
  SpaceRule spaces = SpaceRule::kCompare;
  bool expand_tabs = false;
};

struct ListingShape {
  ListingStyle style;
  ListingFormat format{style};
  int64_t header_lines = 0;  // the ruler line included
  PerSide<HeaderFile> files;
  HeaderRules rules;
  std::string conditions;  // UTF-8, in one line
};

// The most lines that a header has.
inline constexpr size_t kMostHeaderLines = 7;

// Nothing when the lines, without their ends, begin no listing of a text compare.
std::optional<ListingShape> ReadShape(std::span<const SjisView> first_lines);

enum class RowKind : uint8_t {
  kOther,  // header, summary, and every line of a text that is no listing
  kUnchanged,
  kChanged,  // the first row of a changed pair
  kAdded,
  kDeleted,
  kContinued,   // a further row of the line, or the new line of a changed pair one below the other
  kBlockStart,  // the marker before a block
  kBlockEnd,
  kOmission,
  kRuler,  // closes the body; an unchanged line may look the same
};

// What a line below the header is.
RowKind KindOfRow(const ListingShape& shape, SjisView line);
// The block of a marker; 0 for any other line.
int64_t BlockOfMarker(const ListingShape& shape, SjisView line);

// Where a row shows the text of a side, with the spaces that fill it up: [begin, end). Nothing
// where it shows none of that side.
struct SideColumns {
  size_t begin = 0;
  size_t end = 0;
};
std::optional<SideColumns> TextColumns(const ListingShape& shape, RowKind kind, SjisView line,
                                       Side side);

}  // namespace ledrix
