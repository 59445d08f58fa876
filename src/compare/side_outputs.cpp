#include "compare/side_outputs.h"

#include "platform/fixed_width.h"

namespace ledrix::modComp {

SideOutputs::SideOutputs(const CompareOptions& options, MergeMarks marks)
    : prefer_old_(options.merge_prefers_old),
      pad_counts_(!options.simple),
      write_marks_(marks == MergeMarks::kWritten) {}

void SideOutputs::WriteHeading(const std::string& run_stamp, SjisView old_path, SjisView new_path) {
  if (!difference_file) return;
  WriteLine(*difference_file, "<< 差分ファイル >>    出力："_sjis + SjisView::FromBytes(run_stamp));
  WriteLine(*difference_file, "OLD = "_sjis + old_path);
  WriteLine(*difference_file, "NEW = "_sjis + new_path);
}

void SideOutputs::WriteMarker(SjisView ruler, SjisView marker) {
  if (!difference_file) return;
  difference_file->Write(ruler.bytes());
  WriteLine(*difference_file, marker);
}

void SideOutputs::WriteEndLine(const CompareCounts& counts) {
  if (!difference_file) return;
  const auto field = [this](int64_t count) {
    const std::string text = FormatThousands(count);
    return SjisText::FromBytes(pad_counts_ ? RightAligned(text, 6) : text);
  };
  WriteLine(*difference_file, "<< END >>    変更("_sjis + field(counts.changed) + ")  追加("_sjis +
                                  field(counts.added) + ")  削除("_sjis + field(counts.deleted) +
                                  ")  合計("_sjis + field(counts.total()) + ")"_sjis);
}

void SideOutputs::WriteUnchanged(SjisView old_text, SjisView new_text) {
  if (prefer_old_) {
    Merge("=o:", old_text);
  } else {
    Merge("=n:", new_text);
  }
}

void SideOutputs::WriteChanged(SjisView old_text, SjisView new_text) {
  if (difference_file) WriteLine(*difference_file, new_text);
  if (prefer_old_) {
    Merge("/o:", old_text);
  } else {
    Merge("/n:", new_text);
  }
}

void SideOutputs::WriteAdded(SjisView new_text) {
  if (difference_file) WriteLine(*difference_file, new_text);
  Merge(">n:", new_text);
}

void SideOutputs::WriteDeleted(SjisView old_text) {
  if (difference_file) WriteLine(*difference_file, {});
  Merge("<o:", old_text);
}

void SideOutputs::Merge(std::string_view mark, SjisView text) {
  if (!merge_source) return;
  if (write_marks_) merge_source->Write(mark);
  WriteLine(*merge_source, text);
}

}  // namespace ledrix::modComp
