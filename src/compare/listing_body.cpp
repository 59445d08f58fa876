#include "compare/listing_body.h"

#include <algorithm>
#include <cstring>

#include "platform/fixed_width.h"

namespace ledrix::modComp {
namespace {

// Beyond every number of context lines: what follows the block's end is no longer its context.
constexpr int kContextUsedUp = 100;
constexpr std::string_view kLineEnd = "\r\n";

}  // namespace

void ListingBody::WriteUnchanged() {
  const LineIndex o = old_.current();
  const LineIndex n = new_.current();
  sides_.WriteUnchanged(old_.RawAt(o), new_.RawAt(n));
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
  const SjisView old_text = old_.current_raw();
  const SjisView new_text = new_.current_raw();
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
  const SjisView text = new_.current_raw();
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
  const SjisView text = old_.current_raw();
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
  WriteFixedWidth(listing_, format_.ruler_line, format_.listing_width());
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
  const SjisView new_text = new_.RawAt(new_index);
  if (options_.vertical) {
    WriteVertical(format_.marks.unchanged, new_text, new_index + 1);
    return;
  }
  const auto first_piece = [this](SjisView text) {
    return WrapPiece(text, format_.text_width, options_.wrap).bytes;
  };
  WriteRow({first_piece(old_.RawAt(old_index)), old_index + 1}, format_.marks.unchanged,
           {first_piece(new_text), new_index + 1});
}

void ListingBody::WriteSideBySide(const SjisText& mark, bool with_old, bool with_new) {
  SjisView old_rest = with_old ? old_.current_raw() : SjisView();
  SjisView new_rest = with_new ? new_.current_raw() : SjisView();
  const auto next_row = [this](bool with, SjisView& rest, const LineRing& ring) {
    if (!with) return RowSide();
    const WrappedPiece piece = WrapPiece(rest, format_.text_width, options_.wrap);
    rest = piece.rest;
    return RowSide{piece.bytes, ring.current_number()};
  };
  for (size_t row = 0; row < kMostRowsOfLine; ++row) {
    if (row > 0 && old_rest.empty() && new_rest.empty()) break;
    const RowSide old_side = next_row(with_old, old_rest, old_);
    const RowSide new_side = next_row(with_new, new_rest, new_);
    WriteRow(old_side, row == 0 ? mark : format_.marks.continued, new_side);
  }
}

void ListingBody::WriteRow(RowSide old_side, SjisView mark, RowSide new_side) {
  const size_t width = format_.listing_width();
  char* const row = listing_.WriteInPlace(width + kLineEnd.size());
  std::memset(row, ' ', width);
  PutSide(row, old_side);
  std::memcpy(row + format_.side_width, mark.data(), kMarkWidth);
  PutSide(row + format_.side_width + kMarkWidth, new_side);
  std::memcpy(row + width, kLineEnd.data(), kLineEnd.size());
}

void ListingBody::PutSide(char* place, RowSide side) const {
  if (side.line_number == 0) return;
  if (options_.line_numbers) {
    const SjisText number = FormatLineNo(side.line_number);
    std::memcpy(place, number.bytes().data(), number.size());
    place += kLineNoWidth;
  }
  if (!side.text.empty()) std::memcpy(place, side.text.data(), side.text.size());
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
