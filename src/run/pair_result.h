// How a pair of a text compare ended, and the words for it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

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

// How many pairs of a multiple compare ended how.
class PairTally {
 public:
  explicit PairTally(int64_t pairs) : pairs_(pairs) {}

  void Add(PairEnd end) { ++ends_[static_cast<size_t>(end)]; }
  int64_t Count(PairEnd end) const { return ends_[static_cast<size_t>(end)]; }
  // In one line, for the user: every way in which pairs ended, and how many were not reached.
  std::string Text() const;

 private:
  int64_t pairs_;
  std::array<int64_t, 6> ends_{};  // by PairEnd
};

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
