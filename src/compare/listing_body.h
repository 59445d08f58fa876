// The body of a listing: each block of differences between two numbered ruler lines, with some
// unchanged lines of context around it and an omission line for the rest.
#pragma once

#include "compare/difference.h"
#include "compare/side_outputs.h"
#include "platform/output_file.h"
#include "run/listing_format.h"
#include "run/run_services.h"

namespace ledrix::modComp {

enum class BlockState { kIdle, kInBlock, kAfterBlock };

// Writes every decision at once: its rows into the listing, its lines into the side outputs, and
// counts it.
class ListingBody : public DecisionWriter {
 public:
  // Everything must outlive the body.
  ListingBody(const CompareOptions& options, const ListingFormat& format, const LineRing& old_ring,
              const LineRing& new_ring, OutputFile& listing, SideOutputs& sides,
              CompareCounts& counts)
      : options_(options),
        format_(format),
        old_(old_ring),
        new_(new_ring),
        listing_(listing),
        sides_(sides),
        counts_(counts) {}

  void WriteUnchanged() override;
  void WriteChanged() override;
  void WriteAdded() override;
  void WriteDeleted() override;
  bool TakesUnchangedRuns() const override {
    return state_ == BlockState::kIdle && !options_.all_lines && !sides_.merge_source;
  }
  void WriteUnchangedRun(LineIndex lines) override { held_back_ += lines; }

  // Ends the body behind the last decision: the omission line for lines held back, or in the box
  // form the end marker of an open block; then the ruler line.
  void Close();

 private:
  void OpenBlock();
  void FlushContext();
  void WriteBlockMarker(char kind);
  void WriteUnchangedRow(LineIndex old_index, LineIndex new_index);

  void WriteSideBySide(const SjisText& mark, bool with_old, bool with_new);
  // A row of the side-by-side layout. A side without a number stays empty.
  struct RowSide {
    SjisView text;
    int64_t line_number = 0;
  };
  void WriteRow(RowSide old_side, SjisView mark, RowSide new_side);
  void PutSide(char* place, RowSide side) const;
  void WriteVertical(const SjisText& mark, SjisView text, int64_t line_number);

  const CompareOptions& options_;
  const ListingFormat& format_;
  const LineRing& old_;
  const LineRing& new_;
  OutputFile& listing_;
  SideOutputs& sides_;
  CompareCounts& counts_;

  BlockState state_ = BlockState::kIdle;
  int64_t block_ = 0;    // number of the last block, from 1
  int after_block_ = 0;  // unchanged rows since the block ended
  // Unchanged lines held back: the pairs directly before the current lines. Only the last of them
  // can ever be shown, so nothing of them is kept but their number.
  LineIndex held_back_ = 0;
};

}  // namespace ledrix::modComp
