#include "platform/line_reader.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "text/byte_search.h"

namespace ledrix {

LineReader::LineReader(InputFile file, size_t block_bytes)
    : file_(std::move(file)), block_size_(block_bytes) {
  // One byte more than a small file needs, so that its end is found without another block.
  if (info().kind == FileKind::kRegular) {
    block_size_ = static_cast<size_t>(std::min<uint64_t>(block_bytes, info().size + 1));
  }
  TakeBlock(block_size_);
  block_ = &blocks_.back();
}

bool LineReader::Next(LineIndex keep_from, SjisView& line) {
  while (true) {
    const Block& block = *block_;
    const char* const bytes = block.bytes.get();
    const void* const found = std::memchr(bytes + scanned_, '\n', block.size - scanned_);
    if (found != nullptr) {
      const auto line_feed = static_cast<size_t>(static_cast<const char*>(found) - bytes);
      const bool has_cr = line_feed > start_ && bytes[line_feed - 1] == '\r';
      return TakeLine(line_feed - (has_cr ? 1 : 0), line_feed + 1, line);
    }
    scanned_ = block.size;
    if (file_ended_) return start_ < block.size && TakeLine(block.size, block.size, line);
    ReadMore(keep_from);
  }
}

bool LineReader::TakeLine(size_t end, size_t next_start, SjisView& line) {
  Block& block = *block_;
  line = SjisView::FromBytes({block.bytes.get() + start_, end - start_});
  start_ = scanned_ = next_start;
  block.lines_end = ++lines_read_;
  return true;
}

void LineReader::TakePending(LineIndex lines, size_t bytes) {
  start_ += bytes;
  scanned_ = start_;
  lines_read_ += lines;
  block_->lines_end = lines_read_;
}

bool LineReader::GiveBack(LineIndex first) {
  if (first == lines_read_) return true;
  if (first < block_begin_ || !failure_.ok()) return false;
  Block& block = blocks_.back();
  const std::string_view bytes(block.bytes.get(), block.size);
  for (; lines_read_ > first; --lines_read_) {
    // The byte before start_ is the end of this line; an earlier one is the end of the line before.
    const size_t line_feed = FindLastByte(bytes.substr(0, start_ - 1), '\n');
    start_ = line_feed == std::string_view::npos ? 0 : line_feed + 1;
  }
  scanned_ = start_;
  block.lines_end = lines_read_;
  return true;
}

void LineReader::ReadMore(LineIndex keep_from) {
  if (blocks_.back().size == blocks_.back().capacity) AddBlock(keep_from);
  Block& block = blocks_.back();
  const Result<size_t> count =
      file_.Read(block.bytes.get() + block.size, block.capacity - block.size);
  if (!count.ok()) {
    // What was read of the line is no line: nothing half read may look like text of the file.
    failure_ = count.error();
    start_ = scanned_ = block.size;
    file_ended_ = true;
    return;
  }
  block.size += count.value();
  bytes_read_ += count.value();
  // The end of a file is where it was when it was opened; some files hold more than they tell.
  const bool all_read = info().size > 0 && bytes_read_ == info().size;
  file_ended_ = count.value() == 0 || all_read;
}

void LineReader::AddBlock(LineIndex keep_from) {
  ReleaseBlocks(keep_from);
  const size_t tail = blocks_.back().size - start_;
  // Doubling keeps the copying of a line of many blocks proportional to its length.
  TakeBlock(std::max(block_size_, tail * 2));
  Block& previous = blocks_[blocks_.size() - 2];
  Block& block = blocks_.back();
  std::memcpy(block.bytes.get(), previous.bytes.get() + start_, tail);
  block.size = tail;
  block.lines_end = lines_read_;
  if (start_ == 0) blocks_.erase(blocks_.end() - 2);  // it holds the copied part and no line
  block_ = &blocks_.back();
  start_ = 0;
  scanned_ = tail;
  block_begin_ = lines_read_;
}

void LineReader::TakeBlock(size_t capacity) {
  if (!spare_.empty() && capacity == spare_.back().capacity) {
    blocks_.push_back(std::move(spare_.back()));
    spare_.pop_back();
    return;
  }
  Block block;
  block.bytes = std::make_unique_for_overwrite<char[]>(capacity);
  block.capacity = capacity;
  blocks_.push_back(std::move(block));
}

void LineReader::ReleaseBlocks(LineIndex keep_from) {
  while (blocks_.size() > 1 && blocks_.front().lines_end <= keep_from) {
    Block block = std::move(blocks_.front());
    blocks_.pop_front();
    if (block.capacity != block_size_ || !spare_.empty()) continue;
    block.size = 0;
    block.derived.Reset();
    spare_.push_back(std::move(block));
  }
}

}  // namespace ledrix
