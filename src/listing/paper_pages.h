// How the rows of a listing, or of any text, fall on pages.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

#include "listing/viewed_file.h"

namespace ledrix {

// A row of paper: columns [begin, end) of a line, counted from 0.
struct PaperRow {
  int64_t line = 0;
  size_t begin = 0;
  size_t end = 0;

  friend bool operator==(const PaperRow&, const PaperRow&) = default;
};

// Fills page after page. A header is left out: it stands on each page above these rows. A line that
// is wider than the paper goes on in further rows. The rows of a change stand on one page with
// each other, and with the marker of their block, wherever a page holds so many.
class PaperPages {
 public:
  // `file` is read whole and must outlive the object. REQUIRES: columns >= 2, rows >= 1.
  PaperPages(ViewedFile& file, size_t columns, size_t rows);

  // The rows of the next page. False behind the last one; a file without rows has one empty page.
  bool Next(std::vector<PaperRow>& page);

 private:
  bool TakeGroup();
  void AddRows(int64_t line);

  ViewedFile& file_;
  const size_t columns_;
  const size_t rows_;
  int64_t next_;
  bool is_first_ = true;
  std::deque<PaperRow> waiting_;  // of the group that did not fit
};

}  // namespace ledrix
