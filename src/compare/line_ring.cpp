#include "compare/line_ring.h"

#include <bit>
#include <utility>

namespace ledrix::modComp {
namespace {

constexpr size_t kLineEndBytes = 2;

}  // namespace

LineRing::LineRing(InputFile file, const CompareOptions& options, LineCounter& counter)
    : options_(options),
      counter_(counter),
      reader_(std::move(file)),
      slots_(std::bit_ceil(static_cast<size_t>(options.window_lines + kHistory + 1))),
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
