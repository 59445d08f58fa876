#include "compare/run_index.h"

#include <algorithm>
#include <bit>

#include "compare/line_hash.h"

namespace ledrix::modComp {

RunIndex::RunIndex(const LineRing& ring, int window_lines, int run_lines)
    : ring_(ring), run_lines_(run_lines) {
  // Room for the window and for the lines of one run that have just left it.
  const size_t places = std::bit_ceil(size_t{1} + window_lines + run_lines);
  mask_ = static_cast<LineIndex>(places) - 1;
  line_hashes_.resize(places);
  run_hashes_.resize(places);
  next_.resize(places);
  bucket_mask_ = 2 * places - 1;
  buckets_.resize(2 * places);
  for (int i = 0; i < run_lines; ++i) oldest_factor_ *= kHashFactor;
}

void RunIndex::Update(LineIndex from, LineIndex end) {
  DropBefore(from);
  if (lines_end_ < from) Restart(from);
  while (lines_end_ < end) AddLine(lines_end_);
}

void RunIndex::DropBefore(LineIndex from) {
  for (; runs_begin_ < std::min(from, runs_end_); ++runs_begin_) {
    Bucket& bucket = buckets_[RunHash(runs_begin_) & bucket_mask_];
    bucket.first = next_[runs_begin_ & mask_];
    if (bucket.first == kNone) bucket.last = kNone;
  }
}

void RunIndex::Restart(LineIndex from) {
  restart_ = lines_end_ = runs_begin_ = runs_end_ = from;
  rolling_ = 0;
}

void RunIndex::AddLine(LineIndex index) {
  const uint64_t hash = HashLine(ring_.At(index).key);
  rolling_ = rolling_ * kHashFactor + hash;
  if (index - restart_ >= run_lines_) {
    rolling_ -= line_hashes_[(index - run_lines_) & mask_] * oldest_factor_;
  }
  line_hashes_[index & mask_] = hash;
  lines_end_ = index + 1;
  const LineIndex start = index + 1 - run_lines_;
  if (start >= restart_) AddRun(start, MixHash(rolling_, kHashFactor));
}

void RunIndex::AddRun(LineIndex start, uint64_t hash) {
  run_hashes_[start & mask_] = hash;
  next_[start & mask_] = kNone;
  Bucket& bucket = buckets_[hash & bucket_mask_];
  if (bucket.first == kNone) {
    bucket.first = start;
  } else {
    next_[bucket.last & mask_] = start;
  }
  bucket.last = start;
  runs_end_ = start + 1;
}

LineIndex RunIndex::FirstBehind(LineIndex after, uint64_t hash) const {
  LineIndex run = BucketOf(hash).first;
  while (run != kNone && run <= after) run = next_[run & mask_];
  return FirstFrom(run, hash);
}

LineIndex RunIndex::NextOf(LineIndex run) const {
  return FirstFrom(next_[run & mask_], RunHash(run));
}

LineIndex RunIndex::FirstFrom(LineIndex run, uint64_t hash) const {
  while (run != kNone && RunHash(run) != hash) run = next_[run & mask_];
  return run;
}

}  // namespace ledrix::modComp
