// The CSV summary of a text compare.
//
// Shift_JIS, CR LF, fields separated by "," without quoting:
//   header   "No.,OldFileName,OldStep,NewFileName,NewStep,Rep,Add,Del,Total"
//   compared  No "," old path "," old lines "," new path "," new lines "," changed "," added ","
//             deleted "," total
//   status    No "," old path ",-," new path "," status text
// Rows are numbered from 1 in the order of writing.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/output_file.h"
#include "run/pair_result.h"
#include "text/sjis_text.h"

namespace ledrix {

// The paths of a pair as rows show them.
struct PairPaths {
  const NativePath& old_path;
  const NativePath& new_path;
};

class CsvSummary {
 public:
  // Creates the file, or empties an existing one, and writes the header. All that is written goes
  // into `hash`, if there is one, which must outlive the file.
  Status Open(const NativePath& path, Sha256* hash = nullptr);
  bool is_open() const { return file_.has_value(); }
  // Where the summary is; empty before it is opened for the first time.
  const NativePath& path() const { return path_; }

  // Rows for a summary that is not open are dropped; so are failures until Close().
  void WriteCounts(const PairPaths& paths, const CompareCounts& counts);
  void WriteStatus(const PairPaths& paths, std::string_view status);

  // Closes the file; one that was not written to its end is removed.
  Status Close();

 private:
  void WriteRow(const PairPaths& paths, std::string_view old_lines, const SjisText& rest);

  NativePath path_;
  std::optional<OutputFile> file_;
  int64_t row_number_ = 0;  // of the last row written
};

}  // namespace ledrix
