#include "platform/file_copy.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <memory>

#include "platform/files.h"
#include "platform/replacement.h"

namespace ledrix {
namespace {

Status CopyBytes(const FileDescriptor& from, const FileDescriptor& to,
                 const std::function<void()>& on_block) {
  constexpr size_t kBlockSize = size_t{1} << 18;
  const auto buffer = std::make_unique_for_overwrite<char[]>(kBlockSize);
  while (true) {
    on_block();
    const ssize_t size = read(from.number(), buffer.get(), kBlockSize);
    if (size < 0) return LastError();
    if (size == 0) return Status();
    const Status failed = WriteAll(to, {buffer.get(), static_cast<size_t>(size)});
    if (!failed.ok()) return failed;
  }
}

Status CopyAttributes(const struct stat& status, const FileDescriptor& to) {
  const timespec times[] = {status.st_atim, status.st_mtim};
  if (fchmod(to.number(), status.st_mode & 0777) != 0) return LastError();
  if (futimens(to.number(), times) != 0) return LastError();
  return Status();
}

}  // namespace

Status CopyFile(const NativePath& from, const NativePath& to,
                const std::function<void()>& on_block) {
  const FileDescriptor source(open(from.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
  struct stat status {};
  if (!source.is_open() || fstat(source.number(), &status) != 0) return LastError();
  if (!S_ISREG(status.st_mode)) return Error{ErrorKind::kNotAFile};
  struct stat target {};
  if (stat(to.c_str(), &target) == 0) {
    if (S_ISDIR(target.st_mode)) return Error{ErrorKind::kFolder};
    const bool same = target.st_dev == status.st_dev && target.st_ino == status.st_ino;
    if (same) return Error{ErrorKind::kInputAsOutput};
  }
  Result<Replacement> copy = Replacement::Begin(to);
  if (!copy.ok()) return copy.error();
  Status failure = CopyBytes(source, copy.value().descriptor(), on_block);
  if (failure.ok()) failure = CopyAttributes(status, copy.value().descriptor());
  if (failure.ok()) failure = CheckUnchanged(from, ToFileInfo(status));
  return failure.ok() ? copy.value().Commit(false) : failure;
}

}  // namespace ledrix
