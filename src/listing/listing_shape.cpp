#include "listing/listing_shape.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

#include "text/ascii.h"
#include "text/code_page_932.h"

namespace ledrix {
namespace {

bool Begins(SjisView line, SjisView text) {
  return line.bytes().starts_with(text.bytes());
}
bool Ends(SjisView line, SjisView text) {
  return line.bytes().ends_with(text.bytes());
}
bool Holds(SjisView line, SjisView text) {
  return line.bytes().find(text.bytes()) != std::string_view::npos;
}
SjisView Cut(SjisView line, size_t begin, size_t size) {
  return line.From(begin).First(size);
}
// The digits that a text begins with as a number; 0 when there are none, or too many.
int64_t LeadingDigits(SjisView text) {
  int64_t number = 0;
  const std::string_view bytes = text.bytes();
  const auto [end, error] = std::from_chars(bytes.data(), bytes.data() + bytes.size(), number);
  return error == std::errc() && number > 0 ? number : 0;
}
int NumberAt(SjisView line, size_t begin, size_t size) {
  return static_cast<int>(LeadingDigits(Trim(Cut(line, begin, size).First(9))));
}
// The number behind a text of the line.
int NumberBehind(SjisView line, SjisView text) {
  const size_t found = line.bytes().find(text.bytes());
  return found == std::string_view::npos ? 0 : NumberAt(line, found + text.size(), 4);
}

std::optional<size_t> SideWidth(SjisView first_line) {
  if (first_line.size() % 2 != 0 || first_line.size() < kMarkWidth) return std::nullopt;
  const auto width = static_cast<int>((first_line.size() - kMarkWidth) / 2);
  if (ClampedOption("PrintCompLen", width) != width) return std::nullopt;
  return static_cast<size_t>(width);
}

HeaderRules ReadBoxRules(SjisView line) {
  HeaderRules rules;
  rules.first_column = NumberAt(line, 12, 4);
  rules.last_column = NumberAt(line, 18, 4);
  if (Holds(line, "│右SP無効 "_sjis)) rules.spaces = SpaceRule::kIgnoreTrailing;
  if (Holds(line, "│全SP無効 "_sjis)) rules.spaces = SpaceRule::kIgnoreAll;
  rules.expand_tabs = Holds(line, "TAB-SP変換 "_sjis);
  return rules;
}

HeaderRules ReadSimpleRules(SjisView line) {
  HeaderRules rules;
  rules.first_column = NumberBehind(line, "CompareColumn="_sjis);
  rules.last_column = NumberBehind(line, "～"_sjis);
  if (Holds(line, "( RightSP "_sjis)) rules.spaces = SpaceRule::kIgnoreTrailing;
  if (Holds(line, "( ALLSP "_sjis)) rules.spaces = SpaceRule::kIgnoreAll;
  rules.expand_tabs = Holds(line, "TAB-SP "_sjis);
  return rules;
}

std::string ConditionsText(const HeaderRules& rules, int match_lines, int window_lines) {
  std::string text = "比較範囲 " + std::to_string(rules.first_column) + "～" +
                     std::to_string(rules.last_column) + "桁  一致条件 " +
                     std::to_string(match_lines) + "行  先読行数 " + std::to_string(window_lines) +
                     "行";
  if (rules.spaces == SpaceRule::kIgnoreTrailing) text += "  右SP無効";
  if (rules.spaces == SpaceRule::kIgnoreAll) text += "  全SP無効";
  if (rules.expand_tabs) text += "  TAB-SP変換";
  return text;
}

// One file's cell, in one line or two.
HeaderFile ReadFileCell(SjisView first, std::optional<SjisView> second) {
  HeaderFile file;
  const SjisView with_stamp = second.value_or(first);
  if (with_stamp.size() < kStampWidth) return file;
  const size_t room = with_stamp.size() - kStampWidth;
  file.stamp = std::string(with_stamp.From(room).bytes());
  if (!second) {
    file.path = SjisText(Trim(with_stamp.First(room)));
    return file;
  }
  const SjisView rest = TrimRight(second->First(room));
  // What the end of the first line would split stands in the second, behind a space.
  const bool is_padded = !rest.empty() && SjisCharSize(rest, 0) == 2;
  file.path = SjisText(is_padded ? TrimRight(first) : first) + rest;
  if (rest.empty()) file.path = SjisText(TrimRight(first));
  file.is_whole = rest.size() + 2 < room;
  return file;
}

// Reads the cells of `lines`, one or two of them. `margin` stands before the first cell, `gap`
// between the two.
PerSide<HeaderFile> ReadFiles(std::span<const SjisView> lines, size_t margin, size_t cell,
                              size_t gap) {
  const auto read = [&](size_t begin) {
    std::optional<SjisView> second;
    if (lines.size() > 1) second = Cut(lines[1], begin, cell);
    return ReadFileCell(Cut(lines[0], begin, cell), second);
  };
  return {read(margin), read(margin + cell + gap)};
}

// The style whose ruler line this is.
std::optional<ListingStyle> StyleOf(SjisView ruler_line, size_t side_width, bool simple) {
  for (const bool vertical : {false, true}) {
    for (const bool line_numbers : {false, true}) {
      const ListingStyle style{side_width, vertical, simple, line_numbers};
      if (ruler_line == SjisView(ListingFormat(style).ruler_line)) return style;
    }
  }
  return std::nullopt;
}

// `files` lines lie between those above them and the line that `ruler` counts from 0.
std::optional<ListingShape> MakeShape(std::span<const SjisView> lines, size_t width, bool simple,
                                      size_t ruler) {
  const std::optional<ListingStyle> style = StyleOf(lines[ruler], width, simple);
  if (!style) return std::nullopt;
  ListingShape shape{*style, ListingFormat(*style), static_cast<int64_t>(ruler) + 1, {}, {}, {}};
  const size_t odd = width % 2;
  if (simple) {
    const SjisView line = lines[0];
    shape.rules = ReadSimpleRules(line);
    shape.conditions = ConditionsText(shape.rules, NumberBehind(line, "  MatchLine="_sjis),
                                      NumberBehind(line, "  Buffa="_sjis));
    shape.files = ReadFiles(lines.subspan(1, ruler - 1), 0, width - odd, kMarkWidth + 2 * odd);
  } else {
    const SjisView line = lines[1];
    shape.rules = ReadBoxRules(line);
    shape.conditions = ConditionsText(shape.rules, NumberAt(line, 38, 2), NumberAt(line, 54, 4));
    shape.files = ReadFiles(lines.subspan(3, ruler - 4), 2, width - odd - 4, 10 + 2 * odd);
  }
  return shape;
}

// What the mark of a row tells; nothing for a text that is no mark.
std::optional<RowKind> KindOfMark(const ListingMarks& marks, SjisView mark) {
  if (mark == SjisView(marks.unchanged)) return RowKind::kUnchanged;
  if (mark == SjisView(marks.changed)) return RowKind::kChanged;
  if (mark == SjisView(marks.added)) return RowKind::kAdded;
  if (mark == SjisView(marks.deleted)) return RowKind::kDeleted;
  if (mark == SjisView(marks.continued)) return RowKind::kContinued;
  return std::nullopt;
}

struct Marker {
  RowKind kind;
  int64_t block;
};

std::optional<Marker> ReadMarker(const ListingFormat& format, SjisView line) {
  const size_t at = format.left_ruler.size();
  const SjisView marker = line.From(at);
  if (marker.size() <= format.ruler.size() || marker.At(0) != '(' ||
      !Begins(line, format.left_ruler) || !Ends(line, format.ruler)) {
    return std::nullopt;
  }
  const SjisView text = marker.First(marker.size() - format.ruler.size());
  const int64_t block = LeadingDigits(text.From(2));
  for (const char kind : {'S', 'E'}) {
    if (text == SjisView(BlockMarkerText(kind, block))) {
      return Marker{kind == 'S' ? RowKind::kBlockStart : RowKind::kBlockEnd, block};
    }
  }
  return std::nullopt;
}

bool IsBlank(SjisView text) {
  return TrimRight(text).empty();
}

}  // namespace

std::optional<ListingShape> ReadShape(std::span<const SjisView> first_lines) {
  if (first_lines.empty()) return std::nullopt;
  const std::optional<size_t> width = SideWidth(first_lines[0]);
  if (!width) return std::nullopt;
  const bool simple = Begins(first_lines[0], "CompareColumn="_sjis);
  const bool is_box = Begins(first_lines[0], "┏━━━━┯━━━━━━━┳━━━━┯━━┳━━━━┯━━━┓"_sjis) &&
                      first_lines.size() > 1 && Begins(first_lines[1], "┃比較範囲│"_sjis);
  if (!simple && !is_box) return std::nullopt;
  for (const size_t ruler : simple ? std::array{2, 3} : std::array{5, 6}) {
    if (ruler >= first_lines.size()) break;
    if (!simple && !Holds(first_lines[ruler - 1], "STATUS"_sjis)) continue;
    if (auto shape = MakeShape(first_lines, *width, simple, ruler)) return shape;
  }
  return std::nullopt;
}

RowKind KindOfRow(const ListingShape& shape, SjisView line) {
  const ListingFormat& format = shape.format;
  const bool vertical = shape.style.vertical;
  if (line == SjisView(format.omission_line)) return RowKind::kOmission;
  if (vertical || line.size() == format.listing_width()) {
    const SjisView mark = Cut(line, vertical ? 0 : format.side_width, kMarkWidth);
    const std::optional<RowKind> kind = KindOfMark(format.marks, mark);
    if (kind == RowKind::kUnchanged && line == SjisView(format.ruler_line)) return RowKind::kRuler;
    if (kind) return *kind;
  }
  const std::optional<Marker> marker = ReadMarker(format, line);
  return marker ? marker->kind : RowKind::kOther;
}

int64_t BlockOfMarker(const ListingShape& shape, SjisView line) {
  const std::optional<Marker> marker = ReadMarker(shape.format, line);
  return marker ? marker->block : 0;
}

std::optional<SideColumns> TextColumns(const ListingShape& shape, RowKind kind, SjisView line,
                                       Side side) {
  const bool of_old = kind == RowKind::kChanged || kind == RowKind::kDeleted;
  const bool of_new = kind == RowKind::kContinued || kind == RowKind::kAdded;
  if (!of_old && !of_new && kind != RowKind::kUnchanged) return std::nullopt;
  const size_t number = shape.style.line_numbers ? kLineNoWidth : 0;
  if (shape.style.vertical) {
    if (side == Side::kOld ? of_new : of_old) return std::nullopt;
    return SideColumns{kMarkWidth + number, line.size()};
  }
  if (kind == (side == Side::kOld ? RowKind::kAdded : RowKind::kDeleted)) return std::nullopt;
  const size_t width = shape.format.side_width;
  const size_t begin = side == Side::kOld ? 0 : width + kMarkWidth;
  if (kind == RowKind::kContinued && IsBlank(Cut(line, begin + number, width - number))) {
    return std::nullopt;
  }
  return SideColumns{begin + number, begin + width};
}

}  // namespace ledrix
