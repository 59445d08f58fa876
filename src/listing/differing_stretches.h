// Which characters of a changed pair differ.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "listing/listing_shape.h"

namespace ledrix {

// Columns [begin, end) of a row.
struct Stretch {
  size_t row = 0;  // counted from 0, the first row of the pair
  size_t begin = 0;
  size_t end = 0;

  friend bool operator==(const Stretch&, const Stretch&) = default;
};

// What of a changed pair differs, by the rows' own text: whole characters, those that the compare
// looked at, spaces as its rule has them. Letter case counts, because a listing does not tell the
// rule for it. Spaces at the end of a text are not told from those that fill up its row, and a
// space that ends a row before a double-byte character counts only when nothing else differs: it
// may stand for the character that did not fit.
//
// `rows` are the pair's first row and those that continue it, kMostRowsOfLine at most. The
// stretches come in the order of rows and columns.
std::vector<Stretch> FindDifferences(const ListingShape& shape, std::span<const SjisView> rows);

// The places [begin, end) of what two sequences do not share, in each of them.
struct SequenceEdit {
  size_t old_begin = 0;
  size_t old_end = 0;
  size_t new_begin = 0;
  size_t new_end = 0;

  friend bool operator==(const SequenceEdit&, const SequenceEdit&) = default;
};
// As few elements as possible, or all between the first and the last difference when there are too
// many for that.
std::vector<SequenceEdit> FindShortestEdit(std::span<const uint16_t> old_side,
                                           std::span<const uint16_t> new_side);

}  // namespace ledrix
