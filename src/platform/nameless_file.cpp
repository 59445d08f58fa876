#include "platform/nameless_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <string>

namespace ledrix {
namespace {

// A file without a name is named through its descriptor's entry here.
constexpr const char* kDescriptors = "/proc/self/fd";

// What the call tells where it cannot make a file without a name.
bool MeansUnsupported(int number) {
  return number == EOPNOTSUPP || number == EISDIR || number == EINVAL || number == ENOENT;
}

Status Link(const FileDescriptor& descriptor, const NativePath& path) {
  const std::string entry = std::string(kDescriptors) + "/" + std::to_string(descriptor.number());
  const int failed = linkat(AT_FDCWD, entry.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW);
  return failed == 0 ? Status() : LastError();
}

bool Exists(const Status& failed) {
  return !failed.ok() && failed.error().system_number == EEXIST;
}

// The path with six characters behind it that nobody else is likely to take.
NativePath UnusedName(const NativePath& path, unsigned attempt) {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  auto number = static_cast<uint64_t>(now.tv_nsec) * 31 + static_cast<uint64_t>(getpid()) + attempt;
  std::string letters;
  for (size_t i = 0; i < kReplacementLetters; ++i, number /= 26) {
    letters += static_cast<char>('a' + number % 26);
  }
  return ReplacementStem(path) + letters;
}

// Links the file under an unused name beside `path` and returns that name.
Result<NativePath> LinkBeside(const FileDescriptor& descriptor, const NativePath& path) {
  constexpr unsigned kMostTries = 100;
  Status failed = Error::System(EEXIST);
  for (unsigned i = 0; i < kMostTries && Exists(failed); ++i) {
    NativePath beside = UnusedName(path, i);
    failed = Link(descriptor, beside);
    if (failed.ok()) return beside;
  }
  return failed.error();
}

}  // namespace

Result<std::optional<FileDescriptor>> OpenNameless(const NativePath& folder, unsigned mode) {
  static const bool can_be_named = access(kDescriptors, X_OK) == 0;
  if (!can_be_named) return std::optional<FileDescriptor>();
  FileDescriptor descriptor(open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, mode));
  if (descriptor.is_open()) return std::optional(std::move(descriptor));
  if (MeansUnsupported(errno)) return std::optional<FileDescriptor>();
  return LastError();
}

NativePath ReplacementStem(const NativePath& path) {
  constexpr size_t kLongestName = 255;  // bytes, of every usual file system
  const std::string name = FileNameOf(path).substr(0, kLongestName - 1 - kReplacementLetters);
  return DirOf(path) + (name + ".");
}

Status GiveFreeName(const FileDescriptor& descriptor, const NativePath& path) {
  return Link(descriptor, path);
}

Status GiveName(const FileDescriptor& descriptor, const NativePath& path) {
  const Status linked = Link(descriptor, path);
  if (!Exists(linked)) return linked;
  struct stat status {};
  if (lstat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode) && !S_ISLNK(status.st_mode)) {
    return linked;
  }
  const Result<NativePath> beside = LinkBeside(descriptor, path);
  if (!beside.ok()) return beside.error();
  if (rename(beside.value().c_str(), path.c_str()) == 0) return Status();
  const Error failure = LastError();
  unlink(beside.value().c_str());
  return failure;
}

Status TakeOver(const FileDescriptor& descriptor, const struct stat& replaced) {
  // A group that can be kept is kept without the owner as well. Setting either clears mode bits.
  constexpr auto kSameOwner = static_cast<uid_t>(-1);
  static_cast<void>(fchown(descriptor.number(), replaced.st_uid, replaced.st_gid) == 0 ||
                    fchown(descriptor.number(), kSameOwner, replaced.st_gid) == 0);
  return fchmod(descriptor.number(), replaced.st_mode & 07777) == 0 ? Status() : LastError();
}

}  // namespace ledrix
