// The lines of one side that a compare holds: a bounded window from the current line on, and a
// few lines behind it that the listing may still show.
//
// Lines are named by their index in the file, from 0; a ring of slots holds them. The end of the
// file is a state, not a line: no line, whatever its bytes, is taken for it.
#pragma once

#include <vector>

#include "compare/compare_tuning.h"
#include "compare/prepare_line.h"
#include "platform/line_reader.h"
#include "settings/compare_options.h"

namespace ledrix::modComp {

// Told of every line read. The window counts lines and bytes of both sides for its progress bar.
class LineCounter {
 public:
  LineCounter() = default;
  LineCounter(const LineCounter&) = delete;
  LineCounter& operator=(const LineCounter&) = delete;
  virtual ~LineCounter() = default;

  // `number` is the line's number in its file, from 1; `bytes` its length after tab expansion,
  // with the line end.
  virtual void LineRead(int64_t number, size_t bytes) = 0;
  // The same for `lines` lines at once, the last of which has this number.
  virtual void LinesRead(int64_t number, int64_t /*lines*/, size_t bytes) {
    LineRead(number, bytes);
  }
};

// Whole lines that stand in both files with the same bytes.
struct EqualLines {
  LineIndex lines = 0;
  size_t bytes = 0;          // in the file, with the line ends
  size_t counted_bytes = 0;  // as LineCounter counts them
};

class LineRing {
 public:
  // Lines behind the current one that stay readable.
  static constexpr LineIndex kHistory = 99;

  // `options` and `counter` must outlive the ring.
  LineRing(InputFile file, const CompareOptions& options, LineCounter& counter,
           const CompareTuning& tuning = {});

  const FileInfo& info() const { return reader_.info(); }

  // Index of the current line, -1 before the first advance; the number of lines at the end.
  LineIndex current() const { return current_; }
  // True when there is no current line because the file is used up.
  bool at_end() const { return current_ >= reader_.lines_read(); }
  // Number of the current line in the file, from 1.
  int64_t current_number() const { return current_ + 1; }
  // Lines read so far; at the end of a compare the file's line count.
  LineIndex lines_read() const { return reader_.lines_read(); }
  const Status& failure() const { return reader_.failure(); }

  // The shown text of a line. REQUIRES: it was read, and lies at most kHistory lines behind the
  // current one.
  SjisView RawAt(LineIndex index) const { return SlotOf(index).line.raw; }
  SjisView current_raw() const { return RawAt(current_); }

  // The line as it was read. REQUIRES: as for RawAt.
  SjisView TextAt(LineIndex index) const { return SlotOf(index).text; }

  // The compared text of a line. REQUIRES: it was read, and lies not behind the current one.
  SjisView KeyAt(LineIndex index) {
    Slot& slot = SlotOf(index);
    if (!slot.has_key) MakeKeyOf(slot);
    return slot.line.key;
  }
  // True when two lines count as equal. REQUIRES: as for KeyAt.
  static bool SameLine(LineRing& old_ring, LineIndex old_index, LineRing& new_ring,
                       LineIndex new_index) {
    const Slot& a = old_ring.SlotOf(old_index);
    const Slot& b = new_ring.SlotOf(new_index);
    if (a.has_key && b.has_key) return a.line.key == b.line.key;
    return a.line.raw == b.line.raw || old_ring.KeyAt(old_index) == new_ring.KeyAt(new_index);
  }

  // Moves to the next line, reading it when the window does not hold it yet. The next line is
  // always read, also with a window of one line. REQUIRES: !at_end(), or no advance yet.
  void AdvanceSide() {
    ++current_;
    if (current_ >= reader_.lines_read()) ReadNextLine();
  }

  // True when the window holds the line of an index, which is read when need be. REQUIRES: the
  // index lies behind the current line.
  bool Holds(LineIndex index) {
    if (index >= current_ + options_.window_lines) return false;
    while (index >= reader_.lines_read()) {
      if (!ReadNextLine()) return false;
    }
    return true;
  }

  // Number of lines held behind the current one.
  LineIndex lines_ahead() const { return reader_.lines_read() - current_ - 1; }
  // Forgets the lines held behind the current one, to be read again. Returns false when they must
  // stay.
  bool DropAhead() { return reader_.GiveBack(current_ + 1); }

  // The lines behind both current ones that are equal byte for byte, as far as both files are
  // read. REQUIRES: no line is held ahead on either side.
  static EqualLines FindEqualAhead(const LineRing& old_ring, const LineRing& new_ring);
  // Moves over lines that FindEqualAhead told of: the last of them becomes the current one, as if
  // every one had been advanced to.
  void AdvanceOver(const EqualLines& equal);

  // Reads until the window is full or the file ends and returns the index behind the last line
  // held.
  LineIndex FillWindow();

 private:
  struct Slot {
    Line line;
    SjisView text;
    bool has_key = false;  // a key that has bytes of its own is made when it is first asked for
  };

  Slot& SlotOf(LineIndex index) { return slots_[index & slot_mask_]; }
  const Slot& SlotOf(LineIndex index) const { return slots_[index & slot_mask_]; }
  void MakeKeyOf(Slot& slot);
  bool ReadNextLine();
  // Puts a line into its slot and returns its size after tab expansion, in bytes.
  size_t KeepLine(LineIndex index, SjisView line);

  const CompareOptions& options_;
  LineCounter& counter_;
  const bool rewrites_keys_;
  LineReader reader_;
  std::vector<Slot> slots_;  // as many as a power of two
  LineIndex slot_mask_;
  LineIndex current_ = -1;
  LineIndex counted_ = 0;  // lines told to the counter; a line is read again after DropAhead
};

}  // namespace ledrix::modComp
