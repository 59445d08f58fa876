#include "platform/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace ledrix {

namespace {

Status RefuseUnreadable(const FileInfo& info) {
  if (info.kind == FileKind::kFolder) return Error{ErrorKind::kFolder};
  if (info.kind == FileKind::kOther) return Error{ErrorKind::kNotAFile};
  return Status();
}

}  // namespace

Status RefuseIrregular(const FileInfo& info) {
  if (info.kind == FileKind::kPipe) return Error{ErrorKind::kPipe};
  return RefuseUnreadable(info);
}

FileInfo ToFileInfo(const struct stat& status) {
  FileInfo info;
  info.modified = status.st_mtim;
  info.device = status.st_dev;
  info.inode = status.st_ino;
  if (S_ISREG(status.st_mode)) {
    info.kind = FileKind::kRegular;
    info.size = static_cast<uint64_t>(status.st_size);
  } else if (S_ISDIR(status.st_mode)) {
    info.kind = FileKind::kFolder;
  } else if (S_ISFIFO(status.st_mode)) {
    info.kind = FileKind::kPipe;
  } else if (S_ISCHR(status.st_mode) && status.st_rdev == makedev(1, 3)) {
    info.kind = FileKind::kNull;
  }
  return info;
}

Result<FileInfo> GetFileInfo(const NativePath& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return LastError();
  return ToFileInfo(status);
}

bool FileSet::Holds(const FileInfo& file) const {
  for (const NativePath& path : waiting_) {
    const Result<FileInfo> info = GetFileInfo(path);
    if (info.ok()) files_.insert({info.value().device, info.value().inode});
  }
  waiting_.clear();
  return files_.count({file.device, file.inode}) > 0;
}

bool FileSet::Holds(const NativePath& path) const {
  if (waiting_.empty() && files_.empty()) return false;
  const Result<FileInfo> info = GetFileInfo(path);
  return info.ok() && Holds(info.value());
}

bool IsFolder(const NativePath& path) {
  const Result<FileInfo> info = GetFileInfo(path);
  return info.ok() && info.value().kind == FileKind::kFolder;
}

bool PathExists(const NativePath& path) {
  const NativePath trimmed(std::string(Trim(SjisView::FromBytes(path.bytes())).bytes()));
  if (trimmed.empty()) return false;
  if (trimmed.bytes().back() == Separator(kPlatformPathStyle)) return IsFolder(trimmed);
  return access(trimmed.c_str(), R_OK) == 0 && !IsFolder(trimmed);
}

bool MayWrite(const NativePath& path) {
  return access(path.c_str(), W_OK) == 0;
}

Status RemoveFile(const NativePath& path) {
  const Result<FileInfo> info = GetFileInfo(path);
  if (!info.ok()) return info.error().IsMissing() ? Status() : info.status();
  if (info.value().kind != FileKind::kRegular) return Status();
  if (unlink(path.c_str()) != 0) return LastError();
  return Status();
}

NativePath RealPath(const NativePath& path) {
  const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.c_str(), nullptr),
                                                         &std::free);
  return real == nullptr ? NativePath() : NativePath(real.get());
}

Status MakePrivateFolder(const NativePath& path) {
  const NativePath folder = StripBackslash(path);
  if (folder.empty() || IsFolder(folder)) return Status();
  const NativePath parent = DirOf(folder);
  if (parent != folder) {
    if (const Status failed = MakePrivateFolder(parent); !failed.ok()) return failed;
  }
  if (mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) return LastError();
  return Status();
}

Status CheckUnchanged(const NativePath& path, const FileInfo& seen) {
  if (seen.kind != FileKind::kRegular) return Status();
  const Result<FileInfo> now = GetFileInfo(path);
  if (!now.ok() && !now.error().IsMissing()) return now.error();
  const bool same = now.ok() && IsSameFile(now.value(), seen) && HaveSameStamp(now.value(), seen);
  return same ? Status() : Status(Error{ErrorKind::kChanged});
}

Result<std::string> ReadWholeFile(const NativePath& path) {
  const Result<FileInfo> info = GetFileInfo(path);
  if (!info.ok()) return info.error();
  if (const Status refused = RefuseIrregular(info.value()); !refused.ok()) return refused.error();
  Result<InputFile> file = InputFile::OpenRegular(path);
  if (!file.ok()) return file.error();
  std::string bytes;
  while (true) {
    constexpr size_t kStep = size_t{1} << 16;
    const size_t size = bytes.size();
    bytes.resize(size + kStep);
    const Result<size_t> count = file.value().Read(bytes.data() + size, kStep);
    if (!count.ok()) return count.error();
    bytes.resize(size + count.value());
    if (count.value() == 0) return bytes;
  }
}

Result<InputFile> InputFile::Open(const NativePath& path) {
  // Looked at before it is opened, because opening a device or a socket may do something to it.
  const Result<FileInfo> before = GetFileInfo(path);
  if (!before.ok()) return before.error();
  if (const Status refused = RefuseUnreadable(before.value()); !refused.ok())
    return refused.error();
  return OpenRegular(path);
}

Result<InputFile> InputFile::OpenRegular(const NativePath& path) {
  FileDescriptor descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
  if (!descriptor.is_open()) return LastError();
  return OverDescriptor(std::move(descriptor));
}

Result<InputFile> InputFile::OverDescriptor(FileDescriptor descriptor) {
  struct stat status {};
  if (fstat(descriptor.number(), &status) != 0) return LastError();
  const FileInfo info = ToFileInfo(status);
  if (const Status refused = RefuseUnreadable(info); !refused.ok()) return refused.error();
  // For a file of a block or two it would cost more than it gives.
  constexpr uint64_t kWorthAdvising = uint64_t{1} << 20;
  if (info.kind == FileKind::kRegular && info.size >= kWorthAdvising) {
    posix_fadvise(descriptor.number(), 0, 0, POSIX_FADV_SEQUENTIAL);
  }
  return InputFile(std::move(descriptor), info);
}

Result<size_t> InputFile::Read(char* buffer, size_t capacity) {
  if (on_block_) on_block_();
  const ssize_t count = read(descriptor_.number(), buffer, capacity);
  if (count < 0) return LastError();
  if (hash_ != nullptr) hash_->Add({buffer, static_cast<size_t>(count)});
  return static_cast<size_t>(count);
}

Result<size_t> InputFile::ReadAt(uint64_t position, char* buffer, size_t capacity) const {
  const ssize_t count = pread(descriptor_.number(), buffer, capacity, static_cast<off_t>(position));
  if (count < 0) return LastError();
  return static_cast<size_t>(count);
}

bool SameContents(InputFile& a, InputFile& b) {
  constexpr size_t kBlockSize = size_t{1} << 18;
  const auto block_a = std::make_unique_for_overwrite<char[]>(kBlockSize);
  const auto block_b = std::make_unique_for_overwrite<char[]>(kBlockSize);
  while (true) {
    const Result<size_t> size = a.Read(block_a.get(), kBlockSize);
    if (!size.ok()) return false;
    size_t done = 0;
    // One byte more than there should be, so that both end together.
    const size_t wanted = std::max<size_t>(size.value(), 1);
    while (done < wanted) {
      const Result<size_t> more = b.Read(block_b.get() + done, wanted - done);
      if (!more.ok()) return false;
      if (more.value() == 0) break;
      done += more.value();
    }
    if (done != size.value() || std::memcmp(block_a.get(), block_b.get(), done) != 0) return false;
    if (done == 0) return true;
  }
}

}  // namespace ledrix
