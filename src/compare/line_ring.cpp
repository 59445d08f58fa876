#include "compare/line_ring.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace ledrix::modComp {
namespace {

constexpr size_t kLineEndBytes = 2;

// Slots for the window and the history, fewer for a file that is too small to fill them. Some
// files that tell of no size hold lines all the same.
size_t SlotsFor(const FileInfo& info, const CompareOptions& options) {
  const auto most = static_cast<uint64_t>(options.window_lines + LineRing::kHistory + 1);
  const bool known = info.kind == FileKind::kRegular && info.size > 0;
  return std::bit_ceil(static_cast<size_t>(known ? std::min(most, info.size + 1) : most));
}

}  // namespace

LineRing::LineRing(InputFile file, const CompareOptions& options, LineCounter& counter)
    : options_(options),
      counter_(counter),
      reader_(std::move(file)),
      slots_(SlotsFor(reader_.info(), options)),
      slot_mask_(static_cast<LineIndex>(slots_.size()) - 1) {}

bool LineRing::ReadNextLine() {
  SjisView text;
  if (!reader_.Next(current_ - kHistory, text)) return false;
  if (options_.expand_tabs) text = ExpandTabs(text, options_.tab_width, reader_.arena());
  const Line line = PrepareLine(options_, text, reader_.arena());
  slots_[(reader_.lines_read() - 1) & slot_mask_] = line;
  counter_.LineRead(reader_.lines_read(), text.size() + kLineEndBytes);
  return true;
}

LineIndex LineRing::FillWindow() {
  while (reader_.lines_read() < current_ + options_.window_lines && ReadNextLine()) {
  }
  return reader_.lines_read();
}

}  // namespace ledrix::modComp
