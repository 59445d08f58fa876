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
  RunIndex(const LineRing& ring, int window_lines, int run_lines);

  // Makes the index hold exactly the runs that begin at `from` or later and end at or before
  // `end`. REQUIRES: the ring holds the lines from `from` to `end`; neither goes back between
  // calls.
  void Update(LineIndex from, LineIndex end);

  // True when a whole run begins at a line that Update covered.
  bool HasRun(LineIndex start) const { return start >= runs_begin_ && start < runs_end_; }
  // REQUIRES: HasRun(start).
  uint64_t RunHash(LineIndex start) const { return run_hashes_[start & mask_]; }

  // The first run with this hash that begins behind `after`, or kNone.
  LineIndex FirstBehind(LineIndex after, uint64_t hash) const;
  // The next run with the same hash, or kNone.
  LineIndex NextOf(LineIndex run) const;

 private:
  struct Bucket {
    LineIndex first = kNone;
    LineIndex last = kNone;
  };

  void DropBefore(LineIndex from);
  void Restart(LineIndex from);
  void AddLine(LineIndex index);
  void AddRun(LineIndex start, uint64_t hash);
  LineIndex FirstFrom(LineIndex run, uint64_t hash) const;
  const Bucket& BucketOf(uint64_t hash) const { return buckets_[hash & bucket_mask_]; }

  const LineRing& ring_;
  const int run_lines_;
  uint64_t oldest_factor_ = 1;  // kHashFactor to the power K: the weight of the line that leaves

  LineIndex mask_;
  std::vector<uint64_t> line_hashes_;  // by line index & mask_
  std::vector<uint64_t> run_hashes_;   // by run start & mask_
  std::vector<LineIndex> next_;        // by run start & mask_: the next run of the bucket
  uint64_t bucket_mask_;
  std::vector<Bucket> buckets_;

  LineIndex restart_ = 0;    // the first line hashed since the last restart
  LineIndex lines_end_ = 0;  // behind the last line hashed
  LineIndex runs_begin_ = 0;
  LineIndex runs_end_ = 0;
  uint64_t rolling_ = 0;  // polynomial of the hashes of the last K lines
};

}  // namespace ledrix::modComp
