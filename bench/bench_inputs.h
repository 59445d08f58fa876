// The inputs of the benchmarks: made from a seed, so that every machine measures the same bytes.
#pragma once

#include <cstdint>
#include <string>

namespace ledrix::bench {

// Writes the pairs OLD and NEW of every case into a folder that exists, `lines` lines a side,
// Shift_JIS with CR LF, lines of 20 to 120 bytes, Japanese and ASCII mixed:
//   same.old same.new              equal contents
//   changed.old changed.new        one line in a hundred changed, in groups of one to four lines
//                                  that are replaced, inserted or deleted
//   tabs.old tabs.new              the same lines, every third indented by one to three tabs
//   different.old different.new    no line in common
//   kinds.old kinds.new            six kinds of lines in random order
//   blocks.old blocks.new          900 lines inserted every 5,000
// Returns false when a file could not be written.
bool MakeInputs(const std::string& folder, int64_t lines);

// Writes only large.old and large.new, made as changed.old and changed.new are.
bool MakeLarge(const std::string& folder, int64_t lines);

// Writes into a folder that exists:
//   trees.old trees.new    the same tree of so many small files, 100 a folder, times included
//   pairs.old pairs.new    a hundredth as many files of 200 equal lines each, of different times
bool MakeTrees(const std::string& folder, int64_t files);

// Writes two directory information files of so many records in random order, half of them common
// (keys.old.ddf and keys.new.ddf), and their keys one a line (keys.old and keys.new).
bool MakeKeys(const std::string& folder, int64_t records);

}  // namespace ledrix::bench
