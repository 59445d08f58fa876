#include "compare/line_ring.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <utility>

#include "text/byte_search.h"

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

// REQUIRES: the line ends at a line end.
SjisView WithoutLineEnd(std::string_view line) {
  line.remove_suffix(line.size() > 1 && line[line.size() - 2] == '\r' ? 2 : 1);
  return SjisView::FromBytes(line);
}

// The first lines of some bytes that end at a line end, all of them or `most`.
EqualLines CountLines(const CompareOptions& options, std::string_view bytes, LineIndex most) {
  EqualLines lines;
  while (lines.bytes < bytes.size() && lines.lines < most) {
    const size_t end = bytes.find('\n', lines.bytes) + 1;
    const SjisView text = WithoutLineEnd(bytes.substr(lines.bytes, end - lines.bytes));
    ++lines.lines;
    lines.bytes = end;
    lines.counted_bytes +=
        kLineEndBytes + (options.expand_tabs ? ExpandedSize(text, options.tab_width) : text.size());
  }
  return lines;
}

}  // namespace

LineRing::LineRing(InputFile file, const CompareOptions& options, LineCounter& counter,
                   const CompareTuning& tuning)
    : options_(options),
      counter_(counter),
      rewrites_keys_(RewritesKeys(options)),
      reader_(std::move(file), tuning.block_bytes),
      slots_(SlotsFor(reader_.info(), options)),
      slot_mask_(static_cast<LineIndex>(slots_.size()) - 1) {}

bool LineRing::ReadNextLine() {
  SjisView text;
  if (!reader_.Next(current_ - kHistory, text)) return false;
  const size_t size = KeepLine(reader_.lines_read() - 1, text);
  if (reader_.lines_read() > counted_) {
    counted_ = reader_.lines_read();
    counter_.LineRead(counted_, size + kLineEndBytes);
  }
  return true;
}

size_t LineRing::KeepLine(LineIndex index, SjisView line) {
  SjisView text = line;
  if (options_.expand_tabs) text = ExpandTabs(text, options_.tab_width, reader_.arena());
  if (rewrites_keys_) {
    SlotOf(index) = {{RawText(options_, text), {}}, line, false};
  } else {
    SlotOf(index) = {PrepareLine(options_, text, reader_.arena()), line, true};
  }
  return text.size();
}

// The arena of the block that was read last outlives every line held.
void LineRing::MakeKeyOf(Slot& slot) {
  slot.line.key = MakeKey(options_, slot.line.raw, reader_.arena());
  slot.has_key = true;
}

EqualLines LineRing::FindEqualAhead(const LineRing& old_ring, const LineRing& new_ring) {
  const std::string_view pending = old_ring.reader_.pending();
  const size_t same = CommonPrefixSize(pending, new_ring.reader_.pending());
  const size_t last_end = FindLastByte(pending.substr(0, same), '\n');
  if (last_end == std::string_view::npos) return {};
  return CountLines(old_ring.options_, pending.substr(0, last_end + 1),
                    std::numeric_limits<LineIndex>::max());
}

void LineRing::AdvanceOver(const EqualLines& equal) {
  const std::string_view bytes = reader_.pending().substr(0, equal.bytes);
  reader_.TakePending(equal.lines, equal.bytes);
  current_ += equal.lines;
  // Of what the current line leaves behind only the last lines can be asked for.
  size_t end = bytes.size();
  for (LineIndex index = current_; end > 0 && index >= current_ - kHistory; --index) {
    const size_t before = FindLastByte(bytes.substr(0, end - 1), '\n');
    const size_t begin = before == std::string_view::npos ? 0 : before + 1;
    KeepLine(index, WithoutLineEnd(bytes.substr(begin, end - begin)));
    end = begin;
  }
  const LineIndex told = counted_ - (current_ + 1 - equal.lines);
  if (told >= equal.lines) return;
  counted_ = current_ + 1;
  counter_.LinesRead(counted_, equal.lines - told,
                     equal.counted_bytes - CountLines(options_, bytes, told).counted_bytes);
}

LineIndex LineRing::FillWindow() {
  while (reader_.lines_read() < current_ + options_.window_lines && ReadNextLine()) {
  }
  return reader_.lines_read();
}

}  // namespace ledrix::modComp
