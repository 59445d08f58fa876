// Cuts a file of any character code into the bytes of its lines.
//
// Byte mode: a line ends at CR LF, CR or LF. UTF-16 mode: at the byte pairs of those units, found
// by stepping one byte at a time in little-endian text and unit by unit from the line's start in
// big-endian text. What follows the last line end is a line when it is not empty.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/error.h"
#include "platform/files.h"

namespace ledrix {

enum class LineCutting { kBytes, kUtf16Le, kUtf16Be };

class LineCutter {
 public:
  // `file` must outlive the cutter.
  explicit LineCutter(InputFile& file) : file_(file) {}

  // The first `size` bytes of the file, fewer when it is shorter. REQUIRES: no line was cut yet.
  std::string_view Peek(size_t size);

  // Takes the next line; its bytes stay valid until the next call. Returns false at the end of the
  // file and after a failed read.
  bool Next(LineCutting cutting, std::string_view& line);

  // The next `size` bytes, fewer at the end of the file. They are not taken, but stay valid until
  // the next call.
  std::string_view NextLines(size_t size);
  // Takes the first `size` bytes of them, whole lines; the last one's end has `end_size` bytes.
  // They have no end_bytes().
  void TakeLines(size_t size, size_t end_size);

  // Takes the next bytes as they stand, line ends included; they stay valid until the next call.
  // Returns false as Next does.
  bool NextBytes(std::string_view& bytes);

  // The bytes that ended the line last taken, none at the end of the file; valid as long as it.
  std::string_view end_bytes() const { return end_bytes_; }
  // Position behind the last byte of the line last taken, in bytes from the start of the file.
  uint64_t line_end() const { return line_end_; }
  const Status& failure() const { return failure_; }

 private:
  static constexpr size_t kBlockSize = size_t{1} << 18;
  static constexpr size_t kNone = std::string_view::npos;

  size_t FindEnd(LineCutting cutting);
  size_t FindByteEnd();
  size_t FindUtf16LeEnd();
  size_t FindUtf16BeEnd();
  size_t EndSize(LineCutting cutting, size_t end) const;
  void ReadMore();
  bool Take(size_t end, size_t next, std::string_view& line);

  InputFile& file_;
  std::vector<char> buffer_;
  size_t used_ = 0;       // bytes of the buffer that are filled
  size_t start_ = 0;      // where the next line begins
  size_t scanned_ = 0;    // no line end begins between start_ and here
  uint64_t dropped_ = 0;  // bytes of the file before the buffer
  uint64_t line_end_ = 0;
  std::string_view end_bytes_;
  bool file_ended_ = false;
  Status failure_;
};

}  // namespace ledrix
