#include "platform/replacement.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <string>
#include <utility>

#include "platform/files.h"
#include "platform/nameless_file.h"

namespace ledrix {
namespace {

// The names in a folder stand on the disk when this succeeds.
Status SyncFolder(const NativePath& folder) {
  const FileDescriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!descriptor.is_open()) return LastError();
  // Some file systems cannot do it for a folder and need not.
  return fsync(descriptor.number()) == 0 || errno == EINVAL ? Status() : LastError();
}

bool IsLetterOrDigit(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

}  // namespace

Result<Replacement> Replacement::Begin(const NativePath& path, Mode mode) {
  Result<std::optional<FileDescriptor>> nameless =
      OpenNameless(DirOf(path), mode == Mode::kPrivate ? 0600 : 0666);
  if (!nameless.ok()) return nameless.error();
  if (nameless.value()) return Replacement(path, std::move(*nameless.value()), NativePath());
  std::string temporary = ReplacementStem(path).bytes() + std::string(kReplacementLetters, 'X');
  FileDescriptor descriptor(mkostemp(temporary.data(), O_CLOEXEC));
  if (!descriptor.is_open()) return LastError();
  return Replacement(path, std::move(descriptor), NativePath(temporary));
}

Replacement::~Replacement() {
  if (descriptor_.is_open() && !temporary_.empty()) unlink(temporary_.c_str());
}

Status Replacement::TakePlace(Place place) {
  const bool is_nameless = temporary_.empty();
  if (place == Place::kFree) {
    if (is_nameless) return GiveFreeName(descriptor_, path_);
    if (link(temporary_.c_str(), path_.c_str()) != 0) return LastError();
    return unlink(temporary_.c_str()) == 0 ? Status() : LastError();
  }
  if (is_nameless) return GiveName(descriptor_, path_);
  return rename(temporary_.c_str(), path_.c_str()) == 0 ? Status() : LastError();
}

Status Replacement::Commit(bool synced, Place place) {
  if (synced && fsync(descriptor_.number()) != 0) return LastError();
  Status failure;
  // A named file is closed first: what the system tells then still counts.
  if (!temporary_.empty()) failure = descriptor_.Close();
  if (failure.ok()) failure = TakePlace(place);
  const bool is_taken = !failure.ok() && failure.error().system_number == EEXIST;
  if (place == Place::kFree && is_taken && temporary_.empty()) return failure;
  if (!failure.ok() && !temporary_.empty()) unlink(temporary_.c_str());
  const Status closed = descriptor_.Close();
  // What stands at the path by now may lack what a close could not write; what is synced cannot.
  if (failure.ok() && !closed.ok() && !synced) unlink(path_.c_str());
  failure.KeepFirst(closed);
  return failure.ok() && synced ? SyncFolder(DirOf(path_)) : failure;
}

Status ReplaceFile(const NativePath& path, std::string_view bytes) {
  const NativePath real = RealPath(path);
  const NativePath& target = real.empty() ? path : real;
  struct stat replaced {};
  const bool replaces = stat(target.c_str(), &replaced) == 0;
  if (replaces) {
    if (const Status refused = RefuseIrregular(ToFileInfo(replaced)); !refused.ok()) return refused;
  }
  Result<Replacement> replacement = Replacement::Begin(target);
  if (!replacement.ok()) return replacement.error();
  const FileDescriptor& descriptor = replacement.value().descriptor();
  Status failure = WriteAll(descriptor, bytes);
  if (failure.ok() && replaces) failure = TakeOver(descriptor, replaced);
  return failure.ok() ? replacement.value().Commit(true) : failure;
}

void RemoveOldReplacements(const NativePath& path) {
  constexpr time_t kOld = time_t{24} * 60 * 60;  // seconds; a younger one may be in the making
  const NativePath real = RealPath(path);
  const std::string stem = ReplacementStem(real.empty() ? path : real).bytes();
  std::error_code failure;
  const std::filesystem::directory_iterator folder(DirOf(NativePath(stem)).bytes(), failure);
  for (auto at = begin(folder); !failure && at != end(folder); at.increment(failure)) {
    const std::string& left = at->path().native();
    if (left.size() != stem.size() + kReplacementLetters || !left.starts_with(stem)) continue;
    if (!std::all_of(left.end() - kReplacementLetters, left.end(), IsLetterOrDigit)) continue;
    struct stat status {};
    const bool is_left = lstat(left.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
                         status.st_uid == geteuid() && time(nullptr) - status.st_mtime > kOld;
    if (is_left) unlink(left.c_str());
  }
}

}  // namespace ledrix
