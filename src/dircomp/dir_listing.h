// The listing of a directory compare: header, one detail block a difference, counts.
//
// Every line is L bytes of Shift_JIS (L = 70 to 300), longer texts continue on further lines.
#pragma once

#include <string>
#include <string_view>

#include "dircomp/dir_side.h"
#include "platform/local_time.h"
#include "platform/output_file.h"
#include "settings/dir_compare_options.h"
#include "text/sjis_text.h"

namespace ledrix::modDComp {

// Counts of entries.
struct DirCompCounts {
  int64_t old_entries = 0;
  int64_t new_entries = 0;
  int64_t matching = 0;
  int64_t updated = 0;
  int64_t added = 0;
  int64_t deleted = 0;

  int64_t unmatched() const { return updated + added + deleted; }
};

class DirCompListing {
 public:
  // Details of a kind that is switched off are not written. Both must outlive the listing.
  DirCompListing(OutputFile& file, const DirCompareOptions& options)
      : file_(file), options_(options) {}

  void WriteHeader(const LocalTime& now, const DirSide& old_side, const DirSide& new_side);
  void WriteAdded(const DirEntry& entry);
  void WriteDeleted(const DirEntry& entry);
  void WriteUpdated(const DirEntry& old_entry, const DirEntry& new_entry);
  void WriteSummary(const DirCompCounts& counts, CompareRange range);

 private:
  // A label of 10 bytes, the path, and the date and size behind its last piece.
  void FormatDetailLine(SjisView label, const DirEntry& entry);
  void WriteText(SjisView text);
  SjisText Separator() const;

  OutputFile& file_;
  const DirCompareOptions& options_;
};

// "比較範囲=フルパス", "比較範囲=カレントパス" or "比較範囲=パスなし".
const char* RangeText(CompareRange range);

// The one-line result of the job.
std::string DirCompResultLine(const DirCompCounts& counts);

}  // namespace ledrix::modDComp
