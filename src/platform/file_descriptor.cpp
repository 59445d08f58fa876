#include "platform/file_descriptor.h"

#include <unistd.h>

#include <cerrno>

namespace ledrix {

Error LastError() {
  return Error::System(errno);
}

FileDescriptor::~FileDescriptor() {
  if (is_open()) ::close(number_);
}

Status FileDescriptor::Close() {
  if (!is_open()) return Status();
  const int result = ::close(std::exchange(number_, -1));
  // After EINTR the descriptor is closed all the same.
  return result == 0 || errno == EINTR ? Status() : Status(LastError());
}

Status WriteAll(const FileDescriptor& descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(descriptor.number(), bytes.data(), bytes.size());
    if (count < 0) return LastError();
    bytes.remove_prefix(static_cast<size_t>(count));
  }
  return Status();
}

}  // namespace ledrix
