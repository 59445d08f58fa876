#include "compare/listing_frame.h"

#include "platform/fixed_width.h"

namespace ledrix::modComp {
namespace {

constexpr size_t kBoxWidth = 62;         // each of the two boxes of the header
constexpr size_t kOptionWidth = 26;      // the option text of the box form
constexpr size_t kSummaryWidth = 69;     // the first box of the summary and the frame of "OLD"
constexpr size_t kSimpleDateWidth = 21;  // "DATE yyyy/mm/dd hh:mm"

SjisText Spaces(size_t count) {
  return SjisText::Repeat(count, ' ');
}
SjisText Rule(size_t count) {
  return SjisText::Repeat(count, "━"_sjis);
}
SjisText Number(int64_t number) {
  return SjisText::FromBytes(std::to_string(number));
}

// "RSet": the number right-aligned in `width` characters.
SjisText Field(std::string number, size_t width) {
  return SjisText::FromBytes(RightAligned(std::move(number), width));
}
SjisText Field(int64_t number, size_t width) {
  return Field(std::to_string(number), width);
}
SjisText Count(int64_t number, size_t width) {
  return Field(FormatThousands(number), width);
}

SjisText RunStamp(const HeaderData& data) {
  return SjisText::FromBytes(FormatStamp(data.run_time));
}

std::string LineDifference(const CompareCounts& counts) {
  return FormatSignedThousands(counts.new_lines - counts.old_lines);
}

SjisText BoxOptionText(const CompareOptions& options) {
  SjisText text;
  if (options.spaces == SpaceRule::kIgnoreTrailing) text += "右SP無効 "_sjis;
  if (options.spaces == SpaceRule::kIgnoreAll) text += "全SP無効 "_sjis;
  if (options.expand_tabs) text += "TAB-SP変換 "_sjis;
  return PadOrCut(text, kOptionWidth);
}

SjisText SimpleOptionText(const CompareOptions& options) {
  SjisText text = " "_sjis;
  if (options.spaces == SpaceRule::kIgnoreTrailing) text = " RightSP "_sjis;
  if (options.spaces == SpaceRule::kIgnoreAll) text = " ALLSP "_sjis;
  if (options.expand_tabs) text += "TAB-SP "_sjis;
  return text;
}

// How the two file cells stand in a header line.
struct CellFrame {
  size_t cell_width;  // bytes of one cell
  // One line shows both files when both paths are shorter than the cell less this.
  size_t one_line_margin;
  SjisText left;
  SjisText right;
  SjisText first_gap;  // between the cells of the first line
  SjisText second_gap;
};

bool FitsOneLine(const ListedFile& file, const CellFrame& frame) {
  return Trim(file.path).size() < frame.cell_width - frame.one_line_margin;
}

SjisText OneLineCell(const ListedFile& file, const CellFrame& frame) {
  const FileCell cell = FormatFileCell(file, frame.cell_width);
  return SjisText(SjisView(cell.first).First(frame.cell_width - kStampWidth)) + file.stamp;
}

void WriteFileCells(OutputFile& listing, size_t width, const HeaderData& data,
                    const CellFrame& frame) {
  const auto write = [&](const SjisText& old_cell, const SjisText& gap, const SjisText& new_cell) {
    WriteFixedWidth(listing, frame.left + old_cell + gap + new_cell + frame.right, width);
  };
  if (FitsOneLine(data.old_file, frame) && FitsOneLine(data.new_file, frame)) {
    write(OneLineCell(data.old_file, frame), frame.first_gap, OneLineCell(data.new_file, frame));
    return;
  }
  const FileCell old_cell = FormatFileCell(data.old_file, frame.cell_width);
  const FileCell new_cell = FormatFileCell(data.new_file, frame.cell_width);
  write(old_cell.first, frame.first_gap, new_cell.first);
  write(old_cell.second, frame.second_gap, new_cell.second);
}

void WriteConditions(OutputFile& listing, const CompareOptions& options,
                     const ListingFormat& format, const HeaderData& data) {
  const size_t width = format.listing_width();
  const SjisText gap = Spaces(2 * (format.side_width - kBoxWidth) + kMarkWidth);
  WriteFixedWidth(
      listing,
      "┏━━━━┯━━━━━━━┳━━━━┯━━┳━━━━┯━━━┓"_sjis + gap + "┏━━━┯━━━━━━━━━━━━━┳━━┯━━━━━━━━┓"_sjis, width);
  WriteFixedWidth(listing,
                  "┃比較範囲│"_sjis + Field(options.first_column, 4) + "～"_sjis +
                      Field(options.last_column, 4) + "桁迄┃一致条件│"_sjis +
                      Field(options.match_lines, 2) + "行┃先読行数│"_sjis +
                      Field(options.window_lines, 4) + "行┃"_sjis + gap + "┃OPTION│"_sjis +
                      BoxOptionText(options) + "┃出力│"_sjis + RunStamp(data) + "┃"_sjis,
                  width);
}

}  // namespace

FileCell FormatFileCell(const ListedFile& file, size_t width) {
  const SjisView path = file.path;
  const SjisText below = Spaces(width - kStampWidth) + file.stamp;
  if (path.size() <= width) return {PadOrCut(path, width), below};

  const size_t cut = SplitsDoubleByte(path, width) ? width - 1 : width;
  const SjisView rest = path.From(cut);
  const size_t room = width - kStampWidth - 1;
  const size_t rest_cut = SplitsDoubleByte(rest, room) ? room - 1 : room;
  return {PadOrCut(path.First(cut), width), PadOrCut(rest.First(rest_cut), room + 1) + file.stamp};
}

void WriteHeaderBox(OutputFile& listing, const CompareOptions& options, const ListingFormat& format,
                    const HeaderData& data) {
  const size_t width = format.listing_width();
  const size_t odd = format.side_width % 2;
  const SjisText wide_gap = Spaces(2 * odd + kMarkWidth);
  WriteConditions(listing, options, format, data);

  const SjisText rule = Rule((format.side_width - kBoxWidth) / 2 - 3);
  WriteFixedWidth(listing,
                  "┣━━━━┷━━━━━━━┻━━━━┷━━┻━━━━┷━━━┻"_sjis + rule + "━ OLD"_sjis + wide_gap +
                      "NEW ━"_sjis + rule + "┻━━━┷━━━━━━━━━━━━━┻━━┷━━━━━━━━┫"_sjis,
                  width);

  const SjisText label_gap = Spaces(1 + odd);
  const SjisText bar = "┃"_sjis;
  WriteFileCells(listing, width, data,
                 {format.side_width - odd - 4, 17, bar, bar,
                  bar + label_gap + "FILE"_sjis + label_gap + bar, bar + wide_gap + bar});

  const SjisText bottom = "┗"_sjis + Rule(format.side_width / 2 - 3) + "━┛"_sjis;
  WriteFixedWidth(listing, bottom + Spaces(odd) + "STATUS"_sjis + Spaces(odd) + bottom, width);
  WriteFixedWidth(listing, format.ruler_line, width);
}

void WriteSimpleHeader(OutputFile& listing, const CompareOptions& options,
                       const ListingFormat& format, const HeaderData& data) {
  const size_t width = format.listing_width();
  const size_t odd = format.side_width % 2;
  const SjisText conditions = "CompareColumn="_sjis + Number(options.first_column) + "～"_sjis +
                              Number(options.last_column) + "  MatchLine="_sjis +
                              Number(options.match_lines) + "  Buffa="_sjis +
                              Number(options.window_lines) + "    OPTION("_sjis +
                              SimpleOptionText(options) + ")"_sjis;
  WriteFixedWidth(listing,
                  PadOrCut(conditions, width - kSimpleDateWidth) + "DATE "_sjis + RunStamp(data),
                  width);
  const SjisText gap = Spaces(kMarkWidth + 2 * odd);
  WriteFileCells(listing, width, data, {format.side_width - odd, 17, {}, {}, gap, gap});
  WriteFixedWidth(listing, format.ruler_line, width);
}

void WriteSummaryBox(OutputFile& listing, const ListingFormat& format,
                     const CompareCounts& counts) {
  const size_t width = format.listing_width();
  const SjisText gap = Spaces(format.side_width - kSummaryWidth);
  const SjisText between = Spaces(4);
  WriteFixedWidth(listing,
                  "┏━━┯━━━┳━━┯━━━┳━━┯━━━┳━━┯━━━┓"_sjis + gap + "┏━━━ OLD"_sjis + between +
                      "NEW ━━━┓  ┏━━━━┯━━━━┓"_sjis,
                  width);
  WriteFixedWidth(listing,
                  "┃変更│"_sjis + Count(counts.changed, 6) + "┃追加│"_sjis +
                      Count(counts.added, 6) + "┃削除│"_sjis + Count(counts.deleted, 6) +
                      "┃合計│"_sjis + Count(counts.total(), 6) + "┃"_sjis + gap + "┃"_sjis +
                      Count(counts.old_lines, 7) + " ┃LINE┃"_sjis + Count(counts.new_lines, 7) +
                      " ┃  ┃行数増減│"_sjis + Field(LineDifference(counts), 7) + " ┃"_sjis,
                  width);
  WriteFixedWidth(listing,
                  "┗━━┷━━━┻━━┷━━━┻━━┷━━━┻━━┷━━━┛"_sjis + gap + "┗━━━━┛"_sjis + between +
                      "┗━━━━┛  ┗━━━━┷━━━━┛"_sjis,
                  width);
}

void WriteSimpleSummary(OutputFile& listing, const ListingFormat& format,
                        const CompareCounts& counts) {
  std::string difference = LineDifference(counts);
  difference.resize(7, ' ');
  const std::string line =
      "UPD=" + FormatThousands(counts.changed) + "  ADD=" + FormatThousands(counts.added) +
      "  DEL=" + FormatThousands(counts.deleted) + "  TOTAL=" + FormatThousands(counts.total()) +
      "    OldLine=" + FormatThousands(counts.old_lines) +
      "  NewLine=" + FormatThousands(counts.new_lines) + "  UpDown=" + difference;
  WriteFixedWidth(listing, SjisView::FromBytes(line), format.listing_width());
}

}  // namespace ledrix::modComp
