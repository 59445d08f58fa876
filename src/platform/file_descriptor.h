// An open file descriptor.
#pragma once

#include <string_view>
#include <utility>

#include "platform/error.h"

namespace ledrix {

// Why the call of the system before failed: its errno.
Error LastError();

// An open file descriptor, closed with the object.
class FileDescriptor {
 public:
  FileDescriptor() = default;
  explicit FileDescriptor(int number) : number_(number) {}
  FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~FileDescriptor();

  int number() const { return number_; }
  bool is_open() const { return number_ >= 0; }
  // Closes and reports what the system says of it; success when nothing is open.
  Status Close();

 private:
  int number_ = -1;
};

// Writes all of the bytes.
Status WriteAll(const FileDescriptor& descriptor, std::string_view bytes);

}  // namespace ledrix
