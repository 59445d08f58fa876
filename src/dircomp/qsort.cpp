#include "dircomp/qsort.h"

#include <utility>

namespace ledrix::QSort {
namespace {

using Position = std::ptrdiff_t;

struct Range {
  Position low;
  Position high;
};

// The middle, halves rounded to the even neighbour.
Position Middle(Range range) {
  const Position sum = range.low + range.high;
  const Position half = sum / 2;
  return sum % 2 == 0 ? half : half + half % 2;
}

bool SortsBefore(const SortItem& a, const SortItem& b) {
  return CompareKeys(a.key, b.key) < 0;
}

// Steps 2 to 4; returns where the key of the middle ends up.
Position Partition(std::vector<SortItem>& items, Range range) {
  std::swap(items[range.low], items[Middle(range)]);
  Position last = range.low;
  for (Position i = range.low + 1; i <= range.high; ++i) {
    if (SortsBefore(items[i], items[range.low])) std::swap(items[++last], items[i]);
  }
  std::swap(items[range.low], items[last]);
  return last;
}

// When no key of a range sorts before that of its middle, the steps only put the middle first and
// go on behind it. As long as the next middle has the same, smallest key nothing needs to be
// compared with all the others to know that. Returns the range that is left.
Range TakeSmallest(std::vector<SortItem>& items, Range range, std::string_view smallest) {
  while (range.low < range.high) {
    const Position middle = Middle(range);
    if (items[middle].key != smallest) break;
    std::swap(items[range.low], items[middle]);
    ++range.low;
  }
  return range;
}

}  // namespace

int CompareKeys(std::string_view a, std::string_view b) {
  const int order = a.compare(b);  // bytes as unsigned values
  return order == 0 ? 0 : order > 0 ? 1 : -1;
}

void Sort(std::vector<SortItem>& items) {
  // The two parts of a range do not touch each other, so they may be sorted in any order; the
  // larger waits, which keeps the stack short.
  std::vector<Range> waiting = {{0, static_cast<Position>(items.size()) - 1}};
  while (!waiting.empty()) {
    Range range = waiting.back();
    waiting.pop_back();
    while (range.low < range.high) {
      const Position last = Partition(items, range);
      const Range left{range.low, last - 1};
      Range right{last + 1, range.high};
      if (last == range.low) right = TakeSmallest(items, right, items[last].key);
      const bool left_is_larger = left.high - left.low > right.high - right.low;
      waiting.push_back(left_is_larger ? left : right);
      range = left_is_larger ? right : left;
    }
  }
}

}  // namespace ledrix::QSort
