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

Error LastError() {
  return Error::System(errno);
}

namespace {

Status WriteAll(const FileDescriptor& descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(descriptor.number(), bytes.data(), bytes.size());
    if (count < 0) return LastError();
    bytes.remove_prefix(static_cast<size_t>(count));
  }
  return Status();
}

Status RefuseUnreadable(const FileInfo& info) {
  if (info.kind == FileKind::kFolder) return Error{ErrorKind::kFolder};
  if (info.kind == FileKind::kOther) return Error{ErrorKind::kNotAFile};
  return Status();
}

Status RefuseIrregular(const FileInfo& info) {
  if (info.kind == FileKind::kPipe) return Error{ErrorKind::kPipe};
  return RefuseUnreadable(info);
}

// Gives the file that replaces another one its mode and, as far as the system allows, its owner.
Status TakeOver(const FileDescriptor& descriptor, const struct stat& replaced) {
  // A group that can be kept is kept without the owner as well. Setting either clears mode bits.
  constexpr auto kSameOwner = static_cast<uid_t>(-1);
  static_cast<void>(fchown(descriptor.number(), replaced.st_uid, replaced.st_gid) == 0 ||
                    fchown(descriptor.number(), kSameOwner, replaced.st_gid) == 0);
  return fchmod(descriptor.number(), replaced.st_mode & 07777) == 0 ? Status() : LastError();
}

}  // namespace

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

Status ReplaceFile(const NativePath& path, std::string_view bytes) {
  const NativePath real = RealPath(path);
  const NativePath& target = real.empty() ? path : real;
  struct stat replaced {};
  const bool replaces = stat(target.c_str(), &replaced) == 0;
  if (replaces) {
    if (const Status refused = RefuseIrregular(ToFileInfo(replaced)); !refused.ok()) return refused;
  }
  std::string temporary = target.bytes() + ".XXXXXX";
  FileDescriptor descriptor(mkostemp(temporary.data(), O_CLOEXEC));
  if (!descriptor.is_open()) return LastError();
  Status failure = WriteAll(descriptor, bytes);
  if (failure.ok() && replaces) failure = TakeOver(descriptor, replaced);
  if (failure.ok() && fsync(descriptor.number()) != 0) failure = LastError();
  failure.KeepFirst(descriptor.Close());
  if (failure.ok() && rename(temporary.c_str(), target.c_str()) != 0) failure = LastError();
  if (!failure.ok()) unlink(temporary.c_str());
  return failure;
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

FileDescriptor::~FileDescriptor() {
  if (is_open()) ::close(number_);
}

Status FileDescriptor::Close() {
  if (!is_open()) return Status();
  const int result = ::close(std::exchange(number_, -1));
  // After EINTR the descriptor is closed all the same.
  return result == 0 || errno == EINTR ? Status() : Status(LastError());
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

Result<FileDescriptor> OutputFile::Open(const NativePath& path, int flags, unsigned mode) {
  FileDescriptor descriptor(
      ::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NOCTTY | flags, mode));
  if (!descriptor.is_open()) return LastError();
  return descriptor;
}

Result<OutputFile> OutputFile::Make(const NativePath& path, Result<FileDescriptor> descriptor) {
  if (!descriptor.ok()) return descriptor.error();
  return OutputFile(path, std::move(descriptor.value()));
}

Result<OutputFile> OutputFile::Create(const NativePath& path) {
  return Make(path, Open(path, O_TRUNC, 0666));
}

Result<OutputFile> OutputFile::CreateWhenNeeded(const NativePath& path) {
  struct stat status {};
  const bool is_new = lstat(path.c_str(), &status) != 0 && errno == ENOENT;
  if (!is_new || access(DirOf(path).c_str(), W_OK | X_OK) != 0) return Create(path);
  OutputFile file(path, FileDescriptor());
  file.is_waiting_ = true;
  return file;
}

Result<OutputFile> OutputFile::Append(const NativePath& path) {
  const Result<FileInfo> info = GetFileInfo(path);
  if (info.ok()) {
    if (const Status refused = RefuseIrregular(info.value()); !refused.ok()) return refused.error();
  }
  return Make(path, Open(path, O_APPEND, 0666));
}

void OutputFile::CreateNow() {
  is_waiting_ = false;
  Result<FileDescriptor> descriptor = Open(path_, O_TRUNC, 0666);
  if (descriptor.ok()) {
    descriptor_ = std::move(descriptor.value());
  } else {
    failure_ = descriptor.error();
  }
}

void OutputFile::Buffer(std::string_view bytes) {
  if (bytes.empty()) return;
  std::memcpy(buffer_.get() + used_, bytes.data(), bytes.size());
  used_ += bytes.size();
}

void OutputFile::MakeRoom() {
  Flush();
  if (capacity_ < kBufferSize) {
    buffer_ = std::make_unique_for_overwrite<char[]>(kBufferSize);
    capacity_ = kBufferSize;
  }
  if (on_block_) on_block_();
}

void OutputFile::WriteThrough(std::string_view bytes) {
  MakeRoom();
  if (bytes.size() <= kBufferSize) {
    Buffer(bytes);
  } else {
    WriteAll(bytes);
  }
}

void OutputFile::WriteAll(std::string_view bytes) {
  if (is_waiting_) CreateNow();
  if (failure_.ok()) failure_ = ledrix::WriteAll(descriptor_, bytes);
}

void OutputFile::Flush() {
  WriteAll({buffer_.get(), used_});
  used_ = 0;
}

Status OutputFile::Close() {
  if (is_waiting_ || descriptor_.is_open()) {
    Flush();
    failure_.KeepFirst(descriptor_.Close());
  }
  return failure_;
}

Result<FileDescriptor> OutputFile::Release() {
  Flush();
  if (!failure_.ok()) return failure_.error();
  return std::move(descriptor_);
}

void OutputFile::Discard() {
  descriptor_.Close().Ignore();
  used_ = 0;
  if (std::exchange(is_waiting_, false)) return;
  // Through a link the file itself is removed and not the link.
  struct stat status {};
  if (lstat(path_.c_str(), &status) != 0) return;
  if (S_ISREG(status.st_mode)) {
    unlink(path_.c_str());
  } else if (S_ISLNK(status.st_mode)) {
    RemoveFile(RealPath(path_)).Ignore();
  }
}

}  // namespace ledrix
