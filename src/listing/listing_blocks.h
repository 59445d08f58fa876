// Finds the blocks of a listing and counts its changes, row by row.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "listing/listing_shape.h"

namespace ledrix {

// Lines of a listing are counted from 0.
struct ListingBlock {
  int64_t number = 0;  // as its marker tells it
  int64_t first = 0;   // the line of its start marker
  int64_t end = 0;     // behind its end marker, or behind its last row where it has none
  // Lines of the files, not rows.
  uint32_t changed = 0;
  uint32_t added = 0;
  uint32_t deleted = 0;
};

struct ChangeCounts {
  int64_t changed = 0;
  int64_t added = 0;
  int64_t deleted = 0;

  int64_t total() const { return changed + added + deleted; }
};

class BlockFinder {
 public:
  // `shape` must outlive the finder.
  explicit BlockFinder(const ListingShape& shape) : shape_(&shape) {}

  // Takes the lines of a listing, each once and in their order, from the first on.
  void Add(SjisView line);

  int64_t lines() const { return lines_; }
  // In the order of the listing; the last one may be open.
  const std::vector<ListingBlock>& blocks() const { return blocks_; }
  const ChangeCounts& counts() const { return counts_; }

 private:
  const ListingShape* shape_;
  int64_t lines_ = 0;
  bool is_open_ = false;
  std::vector<ListingBlock> blocks_;
  ChangeCounts counts_;
};

// The index of the block that begins behind a line, or before it; nothing when there is none.
std::optional<size_t> BlockBehind(std::span<const ListingBlock> blocks, int64_t line);
std::optional<size_t> BlockBefore(std::span<const ListingBlock> blocks, int64_t line);
// The index of the last block that begins at or before a line.
std::optional<size_t> BlockAt(std::span<const ListingBlock> blocks, int64_t line);

// The counts that close a listing, as they stand there. The box form cuts long ones.
struct ListingSummary {
  std::string changed;
  std::string added;
  std::string deleted;
  std::string old_lines;
  std::string new_lines;
  size_t count_width = 0;  // at which the first three are cut; 0: they are not

  // True when these counts would stand there so.
  bool Agrees(const ChangeCounts& counts) const;
};

// Lines of a summary.
inline constexpr size_t kMostSummaryLines = 3;
// `last_lines` are the last lines of the listing. Nothing when it does not end in a summary: a
// compare that was stopped has none.
std::optional<ListingSummary> ReadSummary(const ListingShape& shape,
                                          std::span<const SjisView> last_lines);

}  // namespace ledrix
