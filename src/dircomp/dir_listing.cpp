#include "dircomp/dir_listing.h"

#include <algorithm>

#include "dircomp/dir_info_file.h"
#include "platform/fixed_width.h"
#include "text/code_page_932.h"

namespace ledrix::modDComp {
namespace {

constexpr size_t kLabelWidth = 10;
constexpr size_t kPieceMargin = 12;    // a cut piece is this much narrower than a line
constexpr size_t kDateSizeWidth = 52;  // and the last piece this much
constexpr int kMostPieces = 6;

// A space and the number, right-aligned in five characters; larger numbers take more.
std::string CountField(int64_t number) {
  std::string field = " " + std::to_string(number);
  if (field.size() < 5) field.insert(0, 5 - field.size(), ' ');
  return field;
}

}  // namespace

const char* RangeText(CompareRange range) {
  switch (range) {
    case CompareRange::kFullPath:
      return "比較範囲=フルパス";
    case CompareRange::kCurrentPath:
      return "比較範囲=カレントパス";
    case CompareRange::kNoPath:
      return "比較範囲=パスなし";
  }
  return "";
}

void DirCompListing::WriteText(SjisView text) {
  WriteFixedWidth(file_, text, options_.width);
}

SjisText DirCompListing::Separator() const {
  constexpr size_t kFixedWidth = 51;
  return "-STATUS--+"_sjis + SjisText::Repeat(options_.width - kFixedWidth, '-') + "+"_sjis +
         SjisText::Repeat(40, '-');
}

void DirCompListing::WriteHeader(const LocalTime& now, const DirSide& old_side,
                                 const DirSide& new_side) {
  constexpr size_t kMadeWidth = 27;
  WriteText(SjisText::Repeat(options_.width - kMadeWidth, ' ') + "作成  "_sjis +
            EncodeSjis(FormatDateTime(now)));
  const auto write_side = [this](const char* label, const DirSide& side) {
    WriteText(EncodeSjis(label + side.display_root()));
    if (!side.is_info_file()) return;
    WriteText("     ﾌｧｲﾙ名 =("_sjis + PathToSjis(side.shown()) + ")"_sjis);
  };
  write_side("旧ﾃﾞｨﾚｸﾄﾘ名 = ", old_side);
  write_side("新ﾃﾞｨﾚｸﾄﾘ名 = ", new_side);
  WriteText(Separator());
}

void DirCompListing::WriteAdded(const DirEntry& entry) {
  if (options_.with_added) FormatDetailLine("追加　 -> "_sjis, entry);
}

void DirCompListing::WriteDeleted(const DirEntry& entry) {
  if (options_.with_deleted) FormatDetailLine("削除　 -> "_sjis, entry);
}

void DirCompListing::WriteUpdated(const DirEntry& old_entry, const DirEntry& new_entry) {
  if (!options_.with_updated) return;
  FormatDetailLine("更新 前-> "_sjis, old_entry);
  const bool later = new_entry.modified > old_entry.modified;
  FormatDetailLine(later ? "  Up 後-> "_sjis : " Down後-> "_sjis, new_entry);
}

void DirCompListing::FormatDetailLine(SjisView label, const DirEntry& entry) {
  const SjisText continued = "　　　 >> "_sjis;
  SjisText line(label);
  SjisView rest = SjisView::FromBytes(entry.path);
  const size_t piece_width = options_.width - kPieceMargin;
  const size_t last_width = options_.width - kDateSizeWidth;
  for (int pieces = 0; rest.size() > last_width && pieces < kMostPieces; ++pieces) {
    const size_t cut = SplitsDoubleByte(rest, piece_width) ? piece_width - 1 : piece_width;
    line += rest.First(cut);
    WriteText(line);
    rest = rest.From(cut);
    line = continued;
  }
  line += PadOrCut(rest, last_width);
  line += EncodeSjis("  Date(" + DateText(entry.modified) + ") Size(" + SizeText(entry.size) + ")");
  WriteText(line);
}

void DirCompListing::WriteSummary(const DirCompCounts& counts, CompareRange range) {
  WriteText(Separator());
  WriteText(EncodeSjis(
      "OLD=" + CountField(counts.old_entries) + "  NEW=" + CountField(counts.new_entries) +
      "  一致=" + CountField(counts.matching) + "  不一致=" + CountField(counts.unmatched()) +
      "  更新=" + CountField(counts.updated) + "  追加=" + CountField(counts.added) +
      "  削除=" + CountField(counts.deleted) + "    " + RangeText(range)));
}

std::string DirCompResultLine(const DirCompCounts& counts) {
  return "UnMatch=" + CountField(counts.unmatched()) + " OLD=" + CountField(counts.old_entries) +
         " NEW=" + CountField(counts.new_entries) + " Rep=" + CountField(counts.updated) +
         " Add=" + CountField(counts.added) + " Del=" + CountField(counts.deleted);
}

}  // namespace ledrix::modDComp
