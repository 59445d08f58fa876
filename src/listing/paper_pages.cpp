#include "listing/paper_pages.h"

#include <algorithm>

namespace ledrix {

PaperPages::PaperPages(ViewedFile& file, size_t columns, size_t rows)
    : file_(file),
      columns_(columns),
      rows_(rows),
      next_(file.shape() == nullptr ? 0 : file.shape()->header_lines) {}

bool PaperPages::Next(std::vector<PaperRow>& page) {
  page.clear();
  const bool is_first = is_first_;
  is_first_ = false;
  while (!waiting_.empty() || TakeGroup()) {
    const size_t room = rows_ - page.size();
    const bool fits_a_page = waiting_.size() <= rows_;
    if (room == 0 || (waiting_.size() > room && fits_a_page)) return true;
    const auto taken = static_cast<std::ptrdiff_t>(std::min(room, waiting_.size()));
    page.insert(page.end(), waiting_.begin(), waiting_.begin() + taken);
    waiting_.erase(waiting_.begin(), waiting_.begin() + taken);
  }
  return !page.empty() || is_first;
}

// The rows that belong together from the next line on.
bool PaperPages::TakeGroup() {
  if (next_ >= file_.lines()) return false;
  int64_t end = next_ + 1;
  if (file_.shape() != nullptr) {
    const bool is_start = file_.KindAt(next_) == RowKind::kBlockStart && end < file_.lines();
    end = file_.EndOfChange(is_start ? end : next_);
  }
  for (; next_ < end; ++next_) AddRows(next_);
  return true;
}

void PaperPages::AddRows(int64_t line) {
  const ListingShape* const shape = file_.shape();
  if (shape != nullptr && !shape->style.vertical) {
    // As wide as the paper was made for.
    waiting_.push_back({line, 0, columns_});
    return;
  }
  size_t begin = 0;
  size_t column = 0;
  for (const TextChar& c : file_.TextAt(line)) {
    if (column + c.columns - begin > columns_) {
      waiting_.push_back({line, begin, column});
      begin = column;
    }
    column += c.columns;
  }
  waiting_.push_back({line, begin, column});
}

}  // namespace ledrix
