#include "app/terminal_listing.h"

#include <algorithm>

#include "text/code_page_932.h"
#include "text/utf8.h"

namespace ledrix {
namespace {

constexpr const char* kNoColor = "";
constexpr const char* kEndColor = "\033[0m";
constexpr const char* kUnderline = "\033[4m";
constexpr const char* kEndUnderline = "\033[24m";

// Columns of the ruler beside one side alone: with the mark it fits a terminal of 80 columns.
constexpr size_t kMostRuler = 74;

LineText Part(const LineText& text, size_t begin, size_t end) {
  LineText part;
  size_t column = 0;
  for (const TextChar& c : text) {
    if (column >= begin && column < end) part.push_back(c);
    column += c.columns;
  }
  return part;
}

// Takes spaces off the end, but for those in front of a column, counted from 0.
void TrimEnd(LineText& text, size_t kept) {
  size_t width = WidthOf(text);
  while (width > kept && text.back().character == U' ') {
    text.pop_back();
    --width;
  }
}

}  // namespace

TerminalListing::TerminalListing(ViewedFile& file, TerminalLook look)
    : file_(file), look_(look), has_heading_(look.side.has_value()) {}

bool TerminalListing::HasBlocks() const {
  if (!look_.blocks) return true;
  const auto [from, to] = *look_.blocks;
  return from >= 1 && from <= to && from <= static_cast<int64_t>(file_.blocks().size());
}

bool TerminalListing::IsShown(int64_t line, RowKind kind) const {
  const ListingShape* const shape = file_.shape();
  if (shape == nullptr) return true;
  const bool is_header = line < shape->header_lines;
  if (look_.side && (is_header || kind == RowKind::kOther || kind == RowKind::kRuler)) return false;
  if (!look_.blocks || is_header) return true;
  const auto block = BlockAt(file_.blocks(), line);
  if (!block) return false;
  const ListingBlock& at = file_.blocks()[*block];
  return line < at.end && at.number >= look_.blocks->first && at.number <= look_.blocks->second;
}

bool TerminalListing::Next(std::string& line) {
  line.clear();
  if (has_heading_) {
    has_heading_ = false;
    PutHeading(line);
    return true;
  }
  while (next_ < file_.lines()) {
    const int64_t at = next_++;
    const RowKind kind = file_.KindAt(at);
    if (!IsShown(at, kind)) continue;
    if (look_.side) {
      if (!PutSide(at, kind, line)) continue;
    } else {
      PutRow(at, line);
    }
    return true;
  }
  return false;
}

void TerminalListing::PutHeading(std::string& out) {
  const HeaderFile& file = file_.shape()->files[*look_.side];
  const std::string label = look_.side == Side::kOld ? "旧 " : "新 ";
  Put(DecodeUtf8Line(label + DecodeSjis(file.path) + "  " + file.stamp), {}, kNoColor, out);
}

const char* TerminalListing::ColorOf(int64_t line) {
  switch (file_.ChangeAt(line)) {
    case RowKind::kChanged:
      return "\033[33m";
    case RowKind::kAdded:
      return "\033[32m";
    case RowKind::kDeleted:
      return "\033[31m";
    case RowKind::kBlockStart:
    case RowKind::kBlockEnd:
      return "\033[36m";
    case RowKind::kOmission:
      return "\033[2m";
    default:
      return kNoColor;
  }
}

void TerminalListing::PutRow(int64_t line, std::string& out) {
  Put(file_.TextAt(line), file_.StretchesAt(line), ColorOf(line), out);
}

// The mark and the text of the side; false when the row shows nothing of it.
bool TerminalListing::PutSide(int64_t line, RowKind kind, std::string& out) {
  const ListingShape& shape = *file_.shape();
  const LineText row = file_.TextAt(line);
  const size_t mark_at = shape.style.vertical ? 0 : shape.format.side_width;
  LineText shown = Part(row, mark_at, mark_at + kMarkWidth);
  std::vector<Stretch> stretches;
  if (kind == RowKind::kBlockStart || kind == RowKind::kBlockEnd) {
    const LineText ruler = DecodeUtf8Line(shape.format.ruler.bytes());
    shown = Part(row, mark_at, WidthOf(row) - shape.format.ruler.size());
    shown.insert(shown.end(), ruler.begin(),
                 ruler.begin() + static_cast<int64_t>(std::min(ruler.size(), kMostRuler)));
  } else if (kind == RowKind::kOmission) {
    shown = DecodeUtf8Line(shape.style.simple ? "======" : " 中略");
  } else {
    const auto bytes = SjisView::FromBytes(file_.LineAt(line).bytes);
    const auto columns = TextColumns(shape, kind, bytes, *look_.side);
    if (!columns) return false;
    const size_t begin = columns->begin - (shape.style.line_numbers ? kLineNoWidth : 0);
    // The new line of a changed pair is a change like its old one.
    const int64_t first = file_.FirstRowOf(line);
    if (shape.style.vertical && file_.KindAt(first) == RowKind::kChanged && first != line)
      shown = DecodeUtf8Line(DecodeSjis(shape.format.marks.changed));
    if (file_.MayBeCut(line, *look_.side)) ++maybe_cut_;
    const LineText text = Part(row, begin, columns->end);
    shown.insert(shown.end(), text.begin(), text.end());
    for (const Stretch& stretch : file_.StretchesAt(line)) {
      if (stretch.begin < begin || stretch.end > columns->end) continue;
      stretches.push_back(
          {0, stretch.begin - begin + kMarkWidth, stretch.end - begin + kMarkWidth});
    }
  }
  Put(shown, stretches, ColorOf(line), out);
  return true;
}

void TerminalListing::Put(const LineText& text, const std::vector<Stretch>& stretches,
                          const char* color, std::string& out) {
  LineText shown = text;
  TrimEnd(shown, look_.colors && !stretches.empty() ? stretches.back().end : 0);
  const bool has_color = look_.colors && *color != '\0';
  if (has_color) out += color;
  auto next = stretches.begin();
  bool is_underlined = false;
  width_ = 0;
  for (const TextChar& c : shown) {
    while (next != stretches.end() && next->end <= width_) ++next;
    const bool differs = next != stretches.end() && width_ >= next->begin;
    if (look_.colors && differs != is_underlined) out += differs ? kUnderline : kEndUnderline;
    is_underlined = differs;
    AppendUtf8(out, VisibleForm(c.character));
    width_ += c.columns;
  }
  if (look_.colors && (has_color || is_underlined)) out += kEndColor;
}

}  // namespace ledrix
