// Listings as anybody may have altered them.
#include "listing/differing_stretches.h"
#include "listing/line_text.h"
#include "listing/listing_blocks.h"
#include "support.h"
#include "targets.h"
#include "text/ascii.h"

namespace ledrix::fuzz {
namespace {

void RequireColumns(const ListingShape& shape, SjisView line, RowKind kind) {
  for (const Side side : kBothSides) {
    const auto columns = TextColumns(shape, kind, line, side);
    if (shape.style.vertical) continue;
    Require(!columns || (columns->begin <= columns->end && columns->end <= line.size()),
            "the text of a side lies within its row");
  }
  Require(WidthOf(DecodeRow(shape, line)) == line.size(), "a column of text is a byte");
}

void RequireStretches(const ListingShape& shape, std::span<const SjisView> rows) {
  size_t row = 0;
  size_t column = 0;
  for (const Stretch& stretch : FindDifferences(shape, rows)) {
    Require(stretch.row < rows.size() && stretch.begin < stretch.end, "a stretch is not empty");
    Require(stretch.end <= rows[stretch.row].size(), "a stretch lies within its row");
    Require(stretch.row > row || stretch.begin >= column, "stretches come in their order");
    row = stretch.row;
    column = stretch.end;
  }
}

}  // namespace

void ListingTarget(std::string_view bytes) {
  std::vector<SjisView> lines;
  while (!bytes.empty()) lines.push_back(SjisView::FromBytes(TakeLine(bytes)));
  const std::span<const SjisView> all(lines);
  const auto shape = ReadShape(all.first(std::min(all.size(), kMostHeaderLines)));
  if (!shape) return;
  Require(shape->header_lines <= static_cast<int64_t>(all.size()),
          "a header is no longer than its text");
  BlockFinder finder(*shape);
  for (size_t i = 0; i < all.size(); ++i) {
    finder.Add(all[i]);
    const RowKind kind = KindOfRow(*shape, all[i]);
    RequireColumns(*shape, all[i], kind);
    if (kind == RowKind::kChanged)
      RequireStretches(*shape, all.subspan(i, std::min(all.size() - i, kMostRowsOfLine)));
  }
  int64_t end = shape->header_lines;
  for (const ListingBlock& block : finder.blocks()) {
    Require(block.first >= end && block.end > block.first && block.end <= finder.lines(),
            "blocks come in their order");
    end = block.end;
  }
  const auto summary = ReadSummary(*shape, all.last(std::min(all.size(), kMostSummaryLines)));
  if (summary) (void)summary->Agrees(finder.counts());
}

}  // namespace ledrix::fuzz
