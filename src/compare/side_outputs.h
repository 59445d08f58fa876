// The two files that a compare can write beside its listing.
//
// Difference file (extracts of the new side), Shift_JIS, CR LF:
//   heading   "<< 差分ファイル >>    出力：" date " " time / "OLD = " path / "NEW = " path
//   block     ruler marker / the new text of each changed and added line, an empty line for each
//             deleted one / ruler marker when an unchanged line follows
//   end       "<< END >>    変更(" n ")  追加(" n ")  削除(" n ")  合計(" n ")"
//
// Merge source, Shift_JIS, CR LF: every line of both files once in compare order, a changed pair
// in the preferred version; with marks each line begins with "=o:", "=n:", "/o:", "/n:", ">n:" or
// "<o:" (how the line is, and from which side it was taken).
#pragma once

#include <optional>
#include <string>

#include "compare/prepare_line.h"
#include "platform/output_file.h"
#include "run/run_services.h"
#include "text/sjis_text.h"

namespace ledrix::modComp {

enum class MergeMarks { kNone, kWritten };

struct SideOutputs {
  SideOutputs(const CompareOptions& options, MergeMarks marks);

  std::optional<OutputFile> difference_file;
  std::optional<OutputFile> merge_source;

  void WriteHeading(const std::string& run_stamp, SjisView old_path, SjisView new_path);
  void WriteMarker(SjisView ruler, SjisView marker);
  void WriteEndLine(const CompareCounts& counts);

  void WriteUnchanged(SjisView old_text, SjisView new_text);
  void WriteChanged(SjisView old_text, SjisView new_text);
  void WriteAdded(SjisView new_text);
  void WriteDeleted(SjisView old_text);

 private:
  void Merge(std::string_view mark, SjisView text);

  bool prefer_old_;
  bool pad_counts_;  // the end line's counts are padded to six characters
  bool write_marks_;
};

}  // namespace ledrix::modComp
