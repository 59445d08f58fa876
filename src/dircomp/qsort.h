// The sort of the directory compare. Where keys are equal their order is part of the result: it
// decides how duplicates pair up.
//
// The order is the one that these steps give for the positions low to high:
//   1. Done when low >= high.
//   2. mid = (low + high) / 2, a half rounded to the even neighbour; swap low and mid.
//   3. last = low; for i from low + 1 to high: if key i sorts before key low, add 1 to last and
//      swap last and i.
//   4. Swap low and last. 5. The same for low to last - 1, then for last + 1 to high.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace ledrix {

// Tells a long piece of work whether to go on.
using GoOn = std::function<bool()>;

}  // namespace ledrix

namespace ledrix::QSort {

// 0 when the keys are equal, 1 when a sorts after b, else -1: byte by byte, unsigned; a key that
// is the beginning of the other sorts before it.
int CompareKeys(std::string_view a, std::string_view b);

// An entry's key and which entry it belongs to.
struct SortItem {
  std::string_view key;
  size_t entry = 0;
};

// Sorts the positions 0 to size - 1. The depth of the stack does not grow with the number of equal
// keys, nor does the time with its square. Returns false when `go_on`, asked now and then, said no
// and nothing was sorted.
bool Sort(
    std::vector<SortItem>& items, const GoOn& go_on = [] { return true; });

}  // namespace ledrix::QSort
