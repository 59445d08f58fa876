#include "charset/line_cutter.h"

#include <algorithm>

#include "text/byte_search.h"

namespace ledrix {
namespace {

// The longest line end, CR LF in UTF-16.
constexpr size_t kLongestEnd = 4;

}  // namespace

std::string_view LineCutter::Peek(size_t size) {
  while (used_ < size && !file_ended_) ReadMore();
  return {buffer_.data(), std::min(size, used_)};
}

bool LineCutter::Next(LineCutting cutting, std::string_view& line) {
  while (true) {
    const size_t end = FindEnd(cutting);
    // An end at the edge of what is read may turn out to be longer.
    if (end != kNone && (file_ended_ || end + kLongestEnd <= used_)) {
      return Take(end, end + EndSize(cutting, end), line);
    }
    if (file_ended_) return start_ < used_ && Take(used_, used_, line);
    ReadMore();
  }
}

std::string_view LineCutter::NextLines(size_t size) {
  while (used_ - start_ < size && !file_ended_) ReadMore();
  return {buffer_.data() + start_, std::min(size, used_ - start_)};
}

void LineCutter::TakeLines(size_t size, size_t end_size) {
  start_ += size;
  scanned_ = start_;
  line_end_ = dropped_ + start_ - end_size;
  end_bytes_ = {};
}

bool LineCutter::NextBytes(std::string_view& bytes) {
  if (start_ == used_ && !file_ended_) ReadMore();
  return start_ < used_ && Take(used_, used_, bytes);
}

bool LineCutter::Take(size_t end, size_t next, std::string_view& line) {
  line = {buffer_.data() + start_, end - start_};
  line_end_ = dropped_ + end;
  end_bytes_ = {buffer_.data() + end, next - end};
  start_ = scanned_ = next;
  return true;
}

size_t LineCutter::FindEnd(LineCutting cutting) {
  const size_t end = cutting == LineCutting::kBytes     ? FindByteEnd()
                     : cutting == LineCutting::kUtf16Le ? FindUtf16LeEnd()
                                                        : FindUtf16BeEnd();
  scanned_ = end != kNone ? end : std::max(scanned_, used_ > 0 ? used_ - 1 : 0);
  return end;
}

size_t LineCutter::FindByteEnd() {
  return FindEither({buffer_.data(), used_}, '\r', '\n', scanned_);
}

size_t LineCutter::FindUtf16LeEnd() {
  const std::string_view bytes(buffer_.data(), used_);
  size_t j = FindEither(bytes, '\r', '\n', scanned_);
  while (j != kNone && j + 1 < used_ && bytes[j + 1] != '\0') {
    j = FindEither(bytes, '\r', '\n', j + 1);
  }
  return j != kNone && j + 1 < used_ ? j : kNone;
}

size_t LineCutter::FindUtf16BeEnd() {
  for (size_t j = scanned_ - (scanned_ - start_) % 2; j + 1 < used_; j += 2) {
    if (buffer_[j] == '\0' && (buffer_[j + 1] == '\r' || buffer_[j + 1] == '\n')) return j;
  }
  return kNone;
}

size_t LineCutter::EndSize(LineCutting cutting, size_t end) const {
  if (cutting == LineCutting::kBytes) {
    return buffer_[end] == '\r' && end + 1 < used_ && buffer_[end + 1] == '\n' ? 2 : 1;
  }
  const size_t letter = cutting == LineCutting::kUtf16Be ? 1 : 0;  // of a unit's two bytes
  const bool pair = used_ - end >= kLongestEnd && buffer_[end + letter] == '\r' &&
                    buffer_[end + 2 + letter] == '\n' && buffer_[end + 3 - letter] == '\0';
  return pair ? 4 : 2;
}

void LineCutter::ReadMore() {
  // The bytes of lines that were taken make room first.
  std::copy(buffer_.begin() + static_cast<std::ptrdiff_t>(start_),
            buffer_.begin() + static_cast<std::ptrdiff_t>(used_), buffer_.begin());
  dropped_ += start_;
  used_ -= start_;
  scanned_ -= start_;
  start_ = 0;
  if (buffer_.size() < used_ + kBlockSize) buffer_.resize(2 * used_ + kBlockSize);
  const Result<size_t> count = file_.Read(buffer_.data() + used_, buffer_.size() - used_);
  if (count.ok()) {
    used_ += count.value();
    file_ended_ = count.value() == 0;
  } else {
    failure_ = count.error();
    file_ended_ = true;
    start_ = scanned_ = used_;  // half a line is no line
  }
}

}  // namespace ledrix
