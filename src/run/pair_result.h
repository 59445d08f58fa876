// How a pair of a text compare ended, and the words for it.
#pragma once

#include <cstdint>

namespace ledrix {

enum class PairEnd {
  kChanged,    // compared to its end, something differs
  kUnchanged,  // compared to its end, nothing differs
  kSkipped,    // left out by the skip rule
  kExcluded,   // left out by the name patterns
  kFailed,
  kStopped,
};

// The status text of the result list and the CSV summary; empty for a changed pair, and without
// the count that follows it for an unchanged one.
const char* PairEndText(PairEnd end);

// Counts of one compared pair, in lines.
struct CompareCounts {
  int64_t old_lines = 0;
  int64_t new_lines = 0;
  int64_t changed = 0;
  int64_t added = 0;
  int64_t deleted = 0;

  int64_t total() const { return changed + added + deleted; }
};

}  // namespace ledrix
