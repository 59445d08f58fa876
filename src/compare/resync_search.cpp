#include "compare/resync_search.h"

#include <algorithm>

namespace ledrix::modComp {
namespace {

// Further lines of runs that may be compared for each small distance before the index is asked.
constexpr LineIndex kNearTestsPerLine = 4;

// The longest pause between two trials of small distances in vain, in windows of them.
constexpr LineIndex kMostNearPauses = 16;

}  // namespace

ResyncSearch::ResyncSearch(LineRing& old_ring, LineRing& new_ring, const CompareOptions& options,
                           LineIndex near_lines)
    : old_(old_ring),
      new_(new_ring),
      options_(options),
      match_lines_(options.match_lines),
      near_lines_(near_lines),
      near_pause_(near_lines) {}

Resync ResyncSearch::Find() {
  if (old_.current() >= near_from_) {
    if (const std::optional<Resync> found = FindNear()) {
      near_pause_ = near_lines_;
      return *found;
    }
    // Where much has changed small distances are in vain, so they are tried less and less often.
    near_from_ = old_.current() + near_pause_;
    near_pause_ = std::min(2 * near_pause_, kMostNearPauses * near_lines_);
  }
  return FindByIndex();
}

std::optional<Resync> ResyncSearch::FindNear() {
  const LineIndex o = old_.current();
  const LineIndex n = new_.current();
  LineIndex run = 0;
  // Files of a few kinds of lines have many runs that break off late; the index knows better.
  LineIndex tests_left = kNearTestsPerLine * near_lines_;
  for (LineIndex d = 1; d <= near_lines_ && tests_left > 0; ++d) {
    const bool old_held = old_.Holds(o + d);
    const bool new_held = new_.Holds(n + d);
    if (!old_held && !new_held) return Resync{};
    if (new_held && SameLine(o, n + d)) {
      if (RunHolds(o, n + d, tests_left)) return Resync{Resync::Kind::kAdded, d};
    } else if (old_held && SameLine(o + d, n) && RunHolds(o + d, n, tests_left)) {
      return Resync{Resync::Kind::kDeleted, d};
    }
    run = old_held && new_held && SameLine(o + d, n + d) ? run + 1 : 0;
    if (run == match_lines_) return Resync{};
  }
  return std::nullopt;
}

bool ResyncSearch::RunHolds(LineIndex old_index, LineIndex new_index, LineIndex& tests_left) {
  for (LineIndex i = 1; i < match_lines_; ++i, --tests_left) {
    const LineIndex o = old_index + i;
    const LineIndex n = new_index + i;
    if (!old_.Holds(o) || !new_.Holds(n) || !SameLine(o, n)) return false;
  }
  return true;
}

Resync ResyncSearch::FindByIndex() {
  if (!old_runs_) {
    old_runs_.emplace(old_, options_.window_lines, options_.match_lines);
    new_runs_.emplace(new_, options_.window_lines, options_.match_lines);
  }
  old_end_ = old_.FillWindow();
  new_end_ = new_.FillWindow();
  old_runs_->Update(old_.current(), old_end_);
  new_runs_->Update(new_.current(), new_end_);

  // At the distance where both windows end there is nothing left to agree.
  const LineIndex limit = std::max(old_end_ - old_.current(), new_end_ - new_.current());
  const LineIndex addition = FindAddition(limit);
  const LineIndex deletion = FindDeletion(addition);
  const LineIndex nearest = std::min(addition, deletion);
  if (nearest == limit || DiagonalAgrees(nearest)) return {};
  return {deletion < addition ? Resync::Kind::kDeleted : Resync::Kind::kAdded, nearest};
}

LineIndex ResyncSearch::FindAddition(LineIndex limit) const {
  const LineIndex o = old_.current();
  const LineIndex n = new_.current();
  if (!old_runs_->HasRun(o)) return limit;
  const uint64_t hash = old_runs_->RunHash(o);
  LineIndex run = new_runs_->FirstBehind(n, hash);
  while (run != RunIndex::kNone && !SameRun(o, run)) run = new_runs_->NextOf(run, hash);
  return run == RunIndex::kNone ? limit : run - n;
}

LineIndex ResyncSearch::FindDeletion(LineIndex limit) const {
  const LineIndex o = old_.current();
  const LineIndex n = new_.current();
  if (!new_runs_->HasRun(n)) return limit;
  const uint64_t hash = new_runs_->RunHash(n);
  LineIndex run = old_runs_->FirstBehind(o, hash);
  for (; run != RunIndex::kNone && run - o < limit; run = old_runs_->NextOf(run, hash)) {
    const LineIndex opposite = n + (run - o);
    const bool tried = opposite >= new_end_ || !SameLine(o, opposite);
    if (tried && SameRun(run, n)) return run - o;
  }
  return limit;
}

bool ResyncSearch::DiagonalAgrees(LineIndex limit) {
  const LineIndex o = old_.current();
  const LineIndex diagonal = new_.current() - o;
  if (diagonal != diagonal_ || diagonal_next_ <= o) {
    diagonal_ = diagonal;
    diagonal_next_ = o + 1;
    diagonal_run_ = 0;
  }
  const LineIndex end = std::min({old_end_, new_end_ - diagonal, o + limit});
  for (; diagonal_run_ < match_lines_ && diagonal_next_ < end; ++diagonal_next_) {
    const bool same = SameLine(diagonal_next_, diagonal_next_ + diagonal);
    diagonal_run_ = same ? diagonal_run_ + 1 : 0;
  }
  // The run stands where an earlier call may have found it, at or beyond this call's limit.
  return diagonal_run_ >= match_lines_ && diagonal_next_ - 1 - o < limit;
}

bool ResyncSearch::SameLine(LineIndex old_index, LineIndex new_index) const {
  return LineRing::SameLine(old_, old_index, new_, new_index);
}

bool ResyncSearch::SameRun(LineIndex old_index, LineIndex new_index) const {
  for (LineIndex i = 0; i < match_lines_; ++i) {
    if (!SameLine(old_index + i, new_index + i)) return false;
  }
  return true;
}

}  // namespace ledrix::modComp
