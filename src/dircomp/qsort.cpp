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

// An item of the list that is sorted, by its position there, with the first bytes in which keys can
// differ: those behind what all keys begin with, as a number that sorts as the bytes do. Most
// comparisons need no more, and so little is moved quickly.
struct PrefixedItem {
  uint64_t prefix = 0;
  size_t position = 0;
};

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
    prefixed.push_back({prefix, prefixed.size()});
  }
  return prefixed;
}

// The positions of one sort on their way to their order.
class Sorter {
 public:
  explicit Sorter(const std::vector<SortItem>& items)
      : unsorted_(items), items_(WithPrefixes(items)) {}

  bool Run(const GoOn& go_on);
  std::vector<SortItem> Sorted() const;

 private:
  std::string_view KeyAt(Position position) const {
    return unsorted_[items_[position].position].key;
  }
  // For two items of the same prefix.
  bool KeySortsBefore(const PrefixedItem& a, const PrefixedItem& b) const {
    return CompareKeys(unsorted_[a.position].key, unsorted_[b.position].key) < 0;
  }
  Position Partition(Range range);
  Range TakeSmallest(Range range, std::string_view smallest);

  const std::vector<SortItem>& unsorted_;
  std::vector<PrefixedItem> items_;
};

// Steps 2 to 4; returns where the key of the middle ends up.
Position Sorter::Partition(Range range) {
  PrefixedItem* const items = items_.data();
  std::swap(items[range.low], items[Middle(range)]);
  const PrefixedItem middle = items[range.low];
  Position last = range.low;
  for (Position i = range.low + 1; i <= range.high; ++i) {
    bool before = items[i].prefix < middle.prefix;
    if (items[i].prefix == middle.prefix) before = KeySortsBefore(items[i], middle);
    // An item that stays is swapped with itself: which of them do is as good as random, and a
    // branch on it would be mispredicted half of the time.
    last += before ? 1 : 0;
    const Position stays = before ? 0 : 1;
    std::swap(items[last + stays * (i - last)], items[i]);
  }
  std::swap(items[range.low], items[last]);
  return last;
}

// When no key of a range sorts before that of its middle, the steps only put the middle first and
// go on behind it. As long as the next middle has the same, smallest key nothing needs to be
// compared with all the others to know that. Returns the range that is left.
Range Sorter::TakeSmallest(Range range, std::string_view smallest) {
  while (range.low < range.high) {
    const Position middle = Middle(range);
    if (KeyAt(middle) != smallest) break;
    std::swap(items_[range.low], items_[middle]);
    ++range.low;
  }
  return range;
}

bool Sorter::Run(const GoOn& go_on) {
  // The two parts of a range do not touch each other, so they may be sorted in any order; the
  // larger waits, which keeps the stack short.
  std::vector<Range> waiting = {{0, static_cast<Position>(items_.size()) - 1}};
  while (!waiting.empty()) {
    if (!go_on()) return false;
    Range range = waiting.back();
    waiting.pop_back();
    while (range.low < range.high) {
      const Position last = Partition(range);
      const Range left{range.low, last - 1};
      Range right{last + 1, range.high};
      if (last == range.low) right = TakeSmallest(right, KeyAt(last));
      const bool left_is_larger = left.high - left.low > right.high - right.low;
      waiting.push_back(left_is_larger ? left : right);
      range = left_is_larger ? right : left;
    }
  }
  return true;
}

std::vector<SortItem> Sorter::Sorted() const {
  std::vector<SortItem> sorted;
  sorted.reserve(items_.size());
  for (const PrefixedItem& item : items_) sorted.push_back(unsorted_[item.position]);
  return sorted;
}

}  // namespace

int CompareKeys(std::string_view a, std::string_view b) {
  const int order = a.compare(b);  // bytes as unsigned values
  return order == 0 ? 0 : order > 0 ? 1 : -1;
}

bool Sort(std::vector<SortItem>& items, const GoOn& go_on) {
  Sorter sorter(items);
  if (!sorter.Run(go_on)) return false;
  items = sorter.Sorted();
  return true;
}

}  // namespace ledrix::QSort
