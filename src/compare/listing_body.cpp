#include "compare/listing_body.h"

#include <algorithm>

#include "compare/fixed_width.h"

namespace ledrix::modComp {
namespace {

constexpr int kMaxRows = 10;
// Beyond every number of context lines: what follows the block's end is no longer its context.
constexpr int kContextUsedUp = 100;

}  // namespace

void ListingBody::WriteUnchanged() {
  const LineIndex o = old_.current();
  const LineIndex n = new_.current();
  sides_.WriteUnchanged(old_.At(o).raw, new_.At(n).raw);
  if (state_ != BlockState::kIdle) {
    state_ = BlockState::kAfterBlock;
    ++after_block_;
    if (after_block_ == 1) WriteBlockMarker('E');
    if (after_block_ <= options_.context_lines) {
      WriteUnchangedRow(o, n);
      if (after_block_ == 1 && options_.all_lines) after_block_ = kContextUsedUp;
      return;
    }
    state_ = BlockState::kIdle;
    after_block_ = 0;
  }
  if (options_.all_lines) {
    WriteUnchangedRow(o, n);
  } else {
    ++held_back_;
  }
}

void ListingBody::WriteChanged() {
  ++counts_.changed;
  OpenBlock();
  const SjisView old_text = old_.current_line().raw;
  const SjisView new_text = new_.current_line().raw;
  if (options_.vertical) {
    WriteVertical(format_.marks.changed, old_text, old_.current_number());
    WriteVertical(format_.marks.continued, new_text, new_.current_number());
  } else {
    WriteSideBySide(format_.marks.changed, true, true);
  }
  sides_.WriteChanged(old_text, new_text);
}

void ListingBody::WriteAdded() {
  ++counts_.added;
  OpenBlock();
  const SjisView text = new_.current_line().raw;
  if (options_.vertical) {
    WriteVertical(format_.marks.added, text, new_.current_number());
  } else {
    WriteSideBySide(format_.marks.added, false, true);
  }
  sides_.WriteAdded(text);
}

void ListingBody::WriteDeleted() {
  ++counts_.deleted;
  OpenBlock();
  const SjisView text = old_.current_line().raw;
  if (options_.vertical) {
    WriteVertical(format_.marks.deleted, text, old_.current_number());
  } else {
    WriteSideBySide(format_.marks.deleted, true, false);
  }
  sides_.WriteDeleted(text);
}

void ListingBody::Close() {
  if (held_back_ > 0) {
    WriteFixedWidth(listing_, format_.omission_line, format_.listing_width());
  } else if (state_ == BlockState::kInBlock && !options_.simple) {
    WriteBlockMarker('E');
  }
  WriteFixedWidth(listing_, format_.RulerLine(), format_.listing_width());
}

void ListingBody::OpenBlock() {
  if (state_ == BlockState::kInBlock) return;
  FlushContext();
  ++block_;
  WriteBlockMarker('S');
  state_ = BlockState::kInBlock;
  after_block_ = 0;
}

void ListingBody::FlushContext() {
  const LineIndex shown = std::min<LineIndex>(held_back_, options_.context_lines);
  if (shown < held_back_) WriteLine(listing_, format_.omission_line);
  for (LineIndex back = shown; back > 0; --back) {
    WriteUnchangedRow(old_.current() - back, new_.current() - back);
  }
  held_back_ = 0;
}

void ListingBody::WriteBlockMarker(char kind) {
  const SjisText marker = BlockMarkerText(kind, block_);
  listing_.Write(SjisView(format_.left_ruler).bytes());
  listing_.Write(SjisView(marker).bytes());
  WriteLine(listing_, format_.ruler);
  sides_.WriteMarker(format_.ruler, marker);
}

void ListingBody::WriteUnchangedRow(LineIndex old_index, LineIndex new_index) {
  const SjisView new_text = new_.At(new_index).raw;
  if (options_.vertical) {
    WriteVertical(format_.marks.unchanged, new_text, new_index + 1);
    return;
  }
  WriteSide(WrapPiece(old_.At(old_index).raw, format_.text_width, options_.wrap), old_index + 1);
  listing_.Write(format_.marks.unchanged.bytes());
  WriteSide(WrapPiece(new_text, format_.text_width, options_.wrap), new_index + 1);
  WriteLine(listing_, {});
}

void ListingBody::WriteSideBySide(const SjisText& mark, bool with_old, bool with_new) {
  SjisView old_rest = with_old ? old_.current_line().raw : SjisView();
  SjisView new_rest = with_new ? new_.current_line().raw : SjisView();
  const auto write_side = [this](bool with, SjisView& rest, const LineRing& ring) {
    if (!with) {
      WriteSpaces(listing_, format_.side_width);
      return;
    }
    const WrappedPiece piece = WrapPiece(rest, format_.text_width, options_.wrap);
    WriteSide(piece, ring.current_number());
    rest = piece.rest;
  };
  for (int row = 0; row < kMaxRows; ++row) {
    if (row > 0 && old_rest.empty() && new_rest.empty()) break;
    write_side(with_old, old_rest, old_);
    listing_.Write((row == 0 ? mark : format_.marks.continued).bytes());
    write_side(with_new, new_rest, new_);
    WriteLine(listing_, {});
  }
}

void ListingBody::WriteSide(WrappedPiece piece, int64_t line_number) {
  if (options_.line_numbers) {
    listing_.Write(FormatLineNo(line_number).bytes());
    listing_.Write(" ");
  }
  listing_.Write(piece.bytes.bytes());
  WriteSpaces(listing_, piece.padding);
}

void ListingBody::WriteVertical(const SjisText& mark, SjisView text, int64_t line_number) {
  listing_.Write(mark.bytes());
  if (options_.line_numbers) {
    listing_.Write(FormatLineNo(line_number).bytes());
    listing_.Write(" ");
  }
  WriteLine(listing_, text);
}

}  // namespace ledrix::modComp
