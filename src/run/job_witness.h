// What a job did, in all detail, for whoever asked to be told: the inputs as they were read, the
// results and the outputs as they were written.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/files.h"
#include "platform/local_time.h"
#include "platform/native_path.h"
#include "run/pair_result.h"
#include "run/side.h"

namespace ledrix {

// A file as a listing's header shows it.
struct ShownFile {
  NativePath path;
  std::string stamp;  // "yyyy/mm/dd hh:mm"
};

// One input of a pair.
struct InputNote {
  NativePath path;
  FileKind kind = FileKind::kOther;
  uint64_t size = 0;  // bytes read
  timespec modified{};
  std::string sha256;  // of the bytes as they were read; empty when they were not, or not all
  std::string charset;
  std::string found_by;  // how the charset was found
  uint64_t lost = 0;     // characters that became "?"
  ShownFile shown;       // empty without a header
};

// An output that was written whole.
struct OutputNote {
  std::string kind;  // what it is called
  NativePath path;
  uint64_t size = 0;  // bytes
  std::string sha256;
};

// The rules by which lines can be equal although their bytes differ.
enum class EqualityRule { kColumns, kSpaces, kTabs, kCase, kCharacters };
inline constexpr size_t kEqualityRules = 5;

// The lines of a pair that were taken as unchanged although they differ, line ends aside.
struct EqualByRule {
  static constexpr size_t kMostLines = 3;

  int64_t lines = 0;
  // The first of them, numbered from 1.
  PerSide<std::vector<int64_t>> first_lines;
  // By rule: how many of them would differ with that rule alone switched off.
  std::array<int64_t, kEqualityRules> without{};
};

// One pair of a text compare.
struct PairNote {
  PerSide<InputNote> inputs;
  LocalTime run_time;  // what the header shows
  bool has_run_time = false;
  PairEnd end = PairEnd::kFailed;
  CompareCounts counts;
  EqualByRule by_rule;
  std::vector<OutputNote> outputs;
};

// One side of a directory compare, or the tree of a snapshot.
struct EntriesNote {
  NativePath path;
  uint64_t entries = 0;
  // Of a directory information file its bytes; of a tree that is compared the lines `path TAB time
  // TAB size LF` of its entries in the order of their keys, paths as the listing shows them, times
  // as local civil seconds since 1970; of a snapshot its records, each ended by LF alone.
  std::string sha256;
  bool is_file = false;
};

class JobWitness {
 public:
  JobWitness() = default;
  JobWitness(const JobWitness&) = delete;
  JobWitness& operator=(const JobWitness&) = delete;
  virtual ~JobWitness() = default;

  virtual void PairEnded(const PairNote& pair) = 0;
  // An output of the whole job.
  virtual void OutputWritten(const OutputNote& output) = 0;
  virtual void EntriesTaken(Side side, const EntriesNote& entries) = 0;
  // The clock that an output of the whole job shows.
  virtual void ClockShown(const LocalTime& time) = 0;
};

}  // namespace ledrix
