#include "compare/run_index.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "compare/line_hash.h"

namespace ledrix::modComp {

RunIndex::RunIndex(LineRing& ring, int window_lines, int run_lines)
    : ring_(ring), run_lines_(run_lines) {
  // Room for the window and for the lines of one run that have just left it.
  const size_t places = std::bit_ceil(size_t{1} + window_lines + run_lines);
  mask_ = static_cast<LineIndex>(places) - 1;
  entries_.resize(places);
  // So many that most hold one run at most: then there is nothing to walk and to mispredict.
  bucket_mask_ = 4 * places - 1;
  buckets_.assign(4 * places, kNone);
  for (int i = 0; i < run_lines; ++i) oldest_factor_ *= kHashFactor;
}

void RunIndex::Update(LineIndex from, LineIndex end) {
  DropBefore(from);
  if (lines_end_ < from) Restart(from);
  while (lines_end_ < end) AddLine(lines_end_);
}

void RunIndex::DropBefore(LineIndex from) {
  for (; runs_begin_ < std::min(from, runs_end_); ++runs_begin_) {
    LineIndex& last = LastOf(RunHash(runs_begin_));
    if (last == runs_begin_) {
      last = kNone;
    } else {
      At(last).next = At(runs_begin_).next;
    }
  }
}

void RunIndex::Restart(LineIndex from) {
  restart_ = lines_end_ = runs_begin_ = runs_end_ = from;
  rolling_ = 0;
}

void RunIndex::AddLine(LineIndex index) {
  const uint64_t hash = HashLine(ring_.KeyAt(index));
  rolling_ = rolling_ * kHashFactor + hash;
  if (index - restart_ >= run_lines_) {
    rolling_ -= At(index - run_lines_).line_hash * oldest_factor_;
  }
  At(index).line_hash = hash;
  lines_end_ = index + 1;
  const LineIndex start = index + 1 - run_lines_;
  if (start >= restart_) AddRun(start, MixHash(rolling_, kHashFactor));
}

void RunIndex::AddRun(LineIndex start, uint64_t hash) {
  LineIndex& last = LastOf(hash);
  Entry& entry = At(start);
  entry.run_hash = hash;
  entry.next = start;
  if (last != kNone) entry.next = std::exchange(At(last).next, start);
  last = start;
  runs_end_ = start + 1;
}

LineIndex RunIndex::FirstBehind(LineIndex after, uint64_t hash) const {
  LineIndex run = LastOf(hash);
  if (run == kNone || run <= after) return kNone;
  do run = At(run).next;
  while (run <= after);
  return RunHash(run) == hash ? run : NextOf(run, hash);
}

LineIndex RunIndex::NextOf(LineIndex run, uint64_t hash) const {
  const LineIndex last = LastOf(hash);
  while (run != last) {
    run = At(run).next;
    if (RunHash(run) == hash) return run;
  }
  return kNone;
}

}  // namespace ledrix::modComp
