#include "listing/listing_blocks.h"

#include <algorithm>

#include "platform/fixed_width.h"
#include "text/ascii.h"

namespace ledrix {
namespace {

constexpr size_t kBoxCountWidth = 6;

// The text behind a name, up to the next space.
std::string FieldBehind(SjisView line, std::string_view name) {
  const size_t found = line.bytes().find(name);
  if (found == std::string_view::npos) return {};
  const std::string_view behind = line.bytes().substr(found + name.size());
  return std::string(behind.substr(0, behind.find(' ')));
}

std::string FieldAt(SjisView line, size_t begin, size_t size) {
  return std::string(Trimmed(line.From(begin).First(size).bytes()));
}

std::optional<ListingSummary> ReadBoxSummary(const ListingShape& shape, SjisView line) {
  const size_t width = shape.format.side_width;
  if (!line.bytes().starts_with("┃変更│"_sjis.bytes()) ||
      line.size() != shape.format.listing_width()) {
    return std::nullopt;
  }
  return ListingSummary{FieldAt(line, 8, 6),         FieldAt(line, 22, 6),
                        FieldAt(line, 36, 6),        FieldAt(line, width - 9, 7),
                        FieldAt(line, width + 7, 7), kBoxCountWidth};
}

}  // namespace

void BlockFinder::Add(SjisView line) {
  const int64_t at = lines_++;
  if (at < shape_->header_lines) return;
  const RowKind kind = KindOfRow(*shape_, line);
  if (kind == RowKind::kBlockStart) {
    blocks_.push_back({BlockOfMarker(*shape_, line), at, at + 1});
    is_open_ = true;
    return;
  }
  if (!is_open_) return;
  ListingBlock& block = blocks_.back();
  switch (kind) {
    case RowKind::kChanged:
      ++block.changed;
      ++counts_.changed;
      break;
    case RowKind::kAdded:
      ++block.added;
      ++counts_.added;
      break;
    case RowKind::kDeleted:
      ++block.deleted;
      ++counts_.deleted;
      break;
    case RowKind::kContinued:
      break;
    case RowKind::kBlockEnd:
      is_open_ = false;
      break;
    default:
      is_open_ = false;
      return;
  }
  block.end = at + 1;
}

std::optional<size_t> BlockBehind(std::span<const ListingBlock> blocks, int64_t line) {
  const auto found =
      std::upper_bound(blocks.begin(), blocks.end(), line,
                       [](int64_t at, const ListingBlock& block) { return at < block.first; });
  if (found == blocks.end()) return std::nullopt;
  return static_cast<size_t>(found - blocks.begin());
}

std::optional<size_t> BlockAt(std::span<const ListingBlock> blocks, int64_t line) {
  const size_t behind = BlockBehind(blocks, line).value_or(blocks.size());
  if (behind == 0) return std::nullopt;
  return behind - 1;
}

std::optional<size_t> BlockBefore(std::span<const ListingBlock> blocks, int64_t line) {
  return BlockAt(blocks, line - 1);
}

bool ListingSummary::Agrees(const ChangeCounts& counts) const {
  const auto agrees = [this](int64_t count, const std::string& field) {
    const std::string text = FormatThousands(count);
    return (count_width == 0 ? text : text.substr(0, count_width)) == field;
  };
  return agrees(counts.changed, changed) && agrees(counts.added, added) &&
         agrees(counts.deleted, deleted);
}

std::optional<ListingSummary> ReadSummary(const ListingShape& shape,
                                          std::span<const SjisView> last_lines) {
  if (last_lines.empty() || last_lines.back().size() != shape.format.listing_width())
    return std::nullopt;
  if (!shape.style.simple) {
    const bool is_closed = last_lines.back().bytes().starts_with("┗━━┷"_sjis.bytes());
    if (last_lines.size() < 2 || !is_closed) return std::nullopt;
    return ReadBoxSummary(shape, last_lines[last_lines.size() - 2]);
  }
  const SjisView line = last_lines.back();
  if (!line.bytes().starts_with("UPD=")) return std::nullopt;
  return ListingSummary{FieldBehind(line, "UPD="),       FieldBehind(line, "  ADD="),
                        FieldBehind(line, "  DEL="),     FieldBehind(line, "    OldLine="),
                        FieldBehind(line, "  NewLine="), 0};
}

}  // namespace ledrix
