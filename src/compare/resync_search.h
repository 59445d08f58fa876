// Where two files agree again behind two lines that differ.
#pragma once

#include <optional>

#include "compare/line_ring.h"
#include "compare/run_index.h"

namespace ledrix::modComp {

// What the search found at two differing lines.
struct Resync {
  enum class Kind {
    kChanged,  // the current pair is a changed pair
    kAdded,    // the next `lines` new lines are added
    kDeleted,  // the next `lines` old lines are deleted
  };
  Kind kind = Kind::kChanged;
  LineIndex lines = 0;
};

// Looks ahead in both windows for the nearest place where `match_lines` (K) consecutive lines
// agree. At each distance d = 1, 2, ... in this order:
//   addition  the K lines at the old current line equal those d lines behind the new current one
//   deletion  the K lines d lines behind the old current one equal those at the new current one;
//             not tried when the old current line equals the new line at distance d
//   diagonal  K equal pairs stand in a row, the last of them at distance d on both sides
// Every line of an agreement lies inside its side's window. The nearest agreement wins; on the
// diagonal, or when there is none, the current pair is a changed pair.
//
// Most files agree again after a few lines, so small distances are tried as they stand, without
// reading further. Beyond them the time for one call does not grow with the window, apart from the
// lines that enter it: runs are looked up in an index, and the diagonal is walked on from where the
// last call left it.
class ResyncSearch {
 public:
  // Rings and options must outlive the search. Distances up to `near_lines` are tried before the
  // index is asked.
  ResyncSearch(LineRing& old_ring, LineRing& new_ring, const CompareOptions& options,
               LineIndex near_lines);

  // REQUIRES: neither ring is at its end, and their current lines differ.
  Resync Find();

 private:
  // The answer of the distances up to near_lines_; nothing when they leave it open.
  std::optional<Resync> FindNear();
  // True when K lines agree, inside both windows; `tests_left` goes down by those compared.
  // REQUIRES: the first two are held and agree.
  bool RunHolds(LineIndex old_index, LineIndex new_index, LineIndex& tests_left);
  Resync FindByIndex();
  // Distance of the nearest addition, deletion; `limit` when there is none below it.
  LineIndex FindAddition(LineIndex limit) const;
  LineIndex FindDeletion(LineIndex limit) const;
  // True when K equal pairs end on the diagonal at a distance below `limit`.
  bool DiagonalAgrees(LineIndex limit);

  bool SameLine(LineIndex old_index, LineIndex new_index) const;
  bool SameRun(LineIndex old_index, LineIndex new_index) const;

  LineRing& old_;
  LineRing& new_;
  const CompareOptions& options_;
  const LineIndex match_lines_;
  const LineIndex near_lines_;
  // Made when the index is asked for the first time.
  std::optional<RunIndex> old_runs_;
  std::optional<RunIndex> new_runs_;
  // Indexes behind the last line of each window, as of the current call.
  LineIndex old_end_ = 0;
  LineIndex new_end_ = 0;

  // The walk along the diagonal: its new index minus its old index, the old index that comes next
  // and the equal pairs directly before that.
  LineIndex diagonal_ = 0;
  LineIndex diagonal_next_ = 0;
  LineIndex diagonal_run_ = 0;

  LineIndex near_from_ = 0;  // the old index from which small distances are tried again
  LineIndex near_pause_;     // old lines until then after the next trial in vain
};

}  // namespace ledrix::modComp
