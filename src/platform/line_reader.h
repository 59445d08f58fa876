// Cuts a file into lines, reading it block by block.
//
// A line ends at CR LF or at a lone LF; a lone CR is text. What follows the last line end is a
// line when it is not empty. The bytes of a line stay where the block was read until the caller
// says that it no longer needs the line, so a line is never copied, except for the part of it that
// crosses the end of a block.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string_view>
#include <vector>

#include "platform/error.h"
#include "platform/files.h"
#include "text/sjis_text.h"
#include "text/text_arena.h"

namespace ledrix {

// Position of a line in its file, counted from 0.
using LineIndex = int64_t;

class LineReader {
 public:
  static constexpr size_t kBlockBytes = size_t{1} << 18;

  // `block_bytes` are read at a time, fewer when the file is smaller.
  explicit LineReader(InputFile file, size_t block_bytes = kBlockBytes);

  const FileInfo& info() const { return file_.info(); }
  LineIndex lines_read() const { return lines_read_; }

  // Reads the next line, without its end. Lines before `keep_from` may lose their bytes with this
  // call. Returns false at the end of the file and after a failed read.
  bool Next(LineIndex keep_from, SjisView& line);

  // What was read of the file behind the lines taken so far, up to the end of the block: no, some
  // or many lines and perhaps the beginning of one.
  std::string_view pending() const { return {block_->bytes.get() + start_, block_->size - start_}; }
  // Takes `lines` pending lines at once. They are all lines of the first `bytes` pending bytes,
  // which end at a line end.
  void TakePending(LineIndex lines, size_t bytes);

  // Makes the lines from `first` on pending again; Next() reads them as before. Returns false, and
  // does nothing, when they do not all lie in the last block or the file could not be read further.
  // REQUIRES: first <= lines_read().
  bool GiveBack(LineIndex first);

  // Where texts derived from the line last read go; they live as long as the line's own bytes.
  TextArena& arena() { return block_->derived; }

  // Why the file could not be read to its end.
  const Status& failure() const { return failure_; }

 private:
  struct Block {
    std::unique_ptr<char[]> bytes;
    size_t capacity = 0;
    size_t size = 0;          // bytes filled
    LineIndex lines_end = 0;  // index behind the last line that lies here
    TextArena derived;
  };

  void ReadMore(LineIndex keep_from);
  void AddBlock(LineIndex keep_from);
  void TakeBlock(size_t capacity);
  void ReleaseBlocks(LineIndex keep_from);
  bool TakeLine(size_t end, size_t next_start, SjisView& line);

  InputFile file_;
  std::deque<Block> blocks_;
  Block* block_ = nullptr;    // the last one, which is being cut
  std::vector<Block> spare_;  // blocks of the usual size, ready to be used again
  size_t block_size_;
  size_t start_ = 0;    // where the next line begins in the last block
  size_t scanned_ = 0;  // no line end lies in the last block between start_ and here
  uint64_t bytes_read_ = 0;
  bool file_ended_ = false;
  LineIndex lines_read_ = 0;
  LineIndex block_begin_ = 0;  // the first line of the last block
  Status failure_;
};

}  // namespace ledrix
