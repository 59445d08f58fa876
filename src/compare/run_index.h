// Finds where a run of lines stands again in one side's window: an index of every run of K
// consecutive lines by its hash.
//
// Runs are named by the index of their first line. They enter in ascending order and leave in
// ascending order, so each bucket of the table is a queue and nothing is ever searched for to be
// removed. A line is hashed once; the hash of a run follows from that of the run before it.
#pragma once

#include <cstdint>
#include <vector>

#include "compare/line_ring.h"

namespace ledrix::modComp {

class RunIndex {
 public:
  static constexpr LineIndex kNone = -1;

  // `ring` must outlive the index; `run_lines` is K, 1 to 99.
  RunIndex(LineRing& ring, int window_lines, int run_lines);

  // Makes the index hold exactly the runs that begin at `from` or later and end at or before
  // `end`. REQUIRES: the ring holds the lines from `from` to `end`; neither goes back between
  // calls.
  void Update(LineIndex from, LineIndex end);

  // True when a whole run begins at a line that Update covered.
  bool HasRun(LineIndex start) const { return start >= runs_begin_ && start < runs_end_; }
  // REQUIRES: HasRun(start).
  uint64_t RunHash(LineIndex start) const { return At(start).run_hash; }

  // The first run with this hash that begins behind `after`, or kNone.
  LineIndex FirstBehind(LineIndex after, uint64_t hash) const;
  // The next run with this hash behind a run of its bucket, or kNone.
  LineIndex NextOf(LineIndex run, uint64_t hash) const;

 private:
  // Of a line and of the run that begins there.
  struct Entry {
    uint64_t line_hash = 0;
    uint64_t run_hash = 0;
    LineIndex next = kNone;  // the next run of the bucket; behind the last one the first
  };

  void DropBefore(LineIndex from);
  void Restart(LineIndex from);
  void AddLine(LineIndex index);
  void AddRun(LineIndex start, uint64_t hash);
  Entry& At(LineIndex index) { return entries_[index & mask_]; }
  const Entry& At(LineIndex index) const { return entries_[index & mask_]; }
  // The last run of a bucket, or kNone.
  LineIndex& LastOf(uint64_t hash) { return buckets_[hash & bucket_mask_]; }
  LineIndex LastOf(uint64_t hash) const { return buckets_[hash & bucket_mask_]; }

  LineRing& ring_;
  const int run_lines_;
  uint64_t oldest_factor_ = 1;  // kHashFactor to the power K: the weight of the line that leaves

  LineIndex mask_;
  std::vector<Entry> entries_;  // by line index & mask_
  uint64_t bucket_mask_;
  std::vector<LineIndex> buckets_;

  LineIndex restart_ = 0;    // the first line hashed since the last restart
  LineIndex lines_end_ = 0;  // behind the last line hashed
  LineIndex runs_begin_ = 0;
  LineIndex runs_end_ = 0;
  uint64_t rolling_ = 0;  // polynomial of the hashes of the last K lines
};

}  // namespace ledrix::modComp
