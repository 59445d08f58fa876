#include "dircomp/qsort.h"

#include <algorithm>
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

// An item with the first bytes in which keys can differ: those behind what all keys begin with, as
// a number that sorts as the bytes do. Most comparisons need no more.
struct PrefixedItem {
  uint64_t prefix = 0;
  SortItem item;
};

bool SortsBefore(const PrefixedItem& a, const PrefixedItem& b) {
  return a.prefix != b.prefix ? a.prefix < b.prefix : CompareKeys(a.item.key, b.item.key) < 0;
}

// Bytes that all keys but the empty ones begin with.
size_t CommonBeginning(const std::vector<SortItem>& items) {
  const auto first = std::find_if(items.begin(), items.end(),
                                  [](const SortItem& item) { return !item.key.empty(); });
  if (first == items.end()) return 0;
  size_t size = first->key.size();
  for (auto item = first; item != items.end(); ++item) {
    const std::string_view key = item->key;
    if (key.empty()) continue;
    const std::string_view model = first->key.substr(0, std::min(size, key.size()));
    size = static_cast<size_t>(std::mismatch(model.begin(), model.end(), key.begin()).first -
                               model.begin());
  }
  return size;
}

std::vector<PrefixedItem> WithPrefixes(const std::vector<SortItem>& items) {
  const size_t start = CommonBeginning(items);
  std::vector<PrefixedItem> prefixed;
  prefixed.reserve(items.size());
  for (const SortItem& item : items) {
    uint64_t prefix = 0;
    for (size_t i = start; i < start + sizeof prefix; ++i) {
      prefix = prefix << 8 | (i < item.key.size() ? static_cast<unsigned char>(item.key[i]) : 0u);
    }
    prefixed.push_back({prefix, item});
  }
  return prefixed;
}

// Steps 2 to 4; returns where the key of the middle ends up.
Position Partition(std::vector<PrefixedItem>& items, Range range) {
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
Range TakeSmallest(std::vector<PrefixedItem>& items, Range range, std::string_view smallest) {
  while (range.low < range.high) {
    const Position middle = Middle(range);
    if (items[middle].item.key != smallest) break;
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

bool Sort(std::vector<SortItem>& sorted, const GoOn& go_on) {
  std::vector<PrefixedItem> items = WithPrefixes(sorted);
  // The two parts of a range do not touch each other, so they may be sorted in any order; the
  // larger waits, which keeps the stack short.
  std::vector<Range> waiting = {{0, static_cast<Position>(items.size()) - 1}};
  while (!waiting.empty()) {
    if (!go_on()) return false;
    Range range = waiting.back();
    waiting.pop_back();
    while (range.low < range.high) {
      const Position last = Partition(items, range);
      const Range left{range.low, last - 1};
      Range right{last + 1, range.high};
      if (last == range.low) right = TakeSmallest(items, right, items[last].item.key);
      const bool left_is_larger = left.high - left.low > right.high - right.low;
      waiting.push_back(left_is_larger ? left : right);
      range = left_is_larger ? right : left;
    }
  }
  for (size_t i = 0; i < items.size(); ++i) sorted[i] = items[i].item;
  return true;
}

}  // namespace ledrix::QSort
