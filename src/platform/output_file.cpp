#include "platform/output_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <optional>

#include "platform/nameless_file.h"

namespace ledrix {

namespace {

Result<FileDescriptor> OpenInPlace(const NativePath& path, int flags) {
  FileDescriptor descriptor(
      open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NOCTTY | flags, 0666));
  if (!descriptor.is_open()) return LastError();
  return descriptor;
}

// True for a file that another one can take the place of without a difference to anybody: it has
// one name and belongs to this user, who may write it.
bool MayBeReplaced(const NativePath& path, const struct stat& status) {
  return S_ISREG(status.st_mode) && status.st_nlink == 1 && status.st_uid == geteuid() &&
         access(path.c_str(), W_OK) == 0 &&
         getxattr(path.c_str(), "system.posix_acl_access", nullptr, 0) <= 0;
}

// A new file without a name for what is to stand at the path, from which what stands there is
// removed; nothing when the file at the path itself must be written.
std::optional<FileDescriptor> OpenWithoutName(const NativePath& path) {
  struct stat standing {};
  const bool stands = lstat(path.c_str(), &standing) == 0;
  if (stands ? !MayBeReplaced(path, standing) : errno != ENOENT) return std::nullopt;
  Result<std::optional<FileDescriptor>> nameless = OpenNameless(DirOf(path), 0666);
  if (!nameless.ok() || !nameless.value()) return std::nullopt;
  if (stands) {
    const bool taken_over = TakeOver(*nameless.value(), standing).ok();
    if (!taken_over || unlink(path.c_str()) != 0) return std::nullopt;
  }
  return std::move(nameless.value());
}

}  // namespace

Status OutputFile::Open() {
  is_waiting_ = false;
  if (std::optional<FileDescriptor> nameless = OpenWithoutName(path_)) {
    descriptor_ = std::move(*nameless);
    name_ = Name::kAtItsEnd;
    return Status();
  }
  Result<FileDescriptor> descriptor = OpenInPlace(path_, O_TRUNC);
  if (descriptor.ok()) descriptor_ = std::move(descriptor.value());
  return descriptor.status();
}

Result<OutputFile> OutputFile::Create(const NativePath& path) {
  OutputFile file(path, FileDescriptor(), Name::kStands);
  if (const Status failed = file.Open(); !failed.ok()) return failed.error();
  return file;
}

Result<OutputFile> OutputFile::CreateWhenNeeded(const NativePath& path) {
  struct stat status {};
  const bool is_new = lstat(path.c_str(), &status) != 0 && errno == ENOENT;
  if (!is_new || access(DirOf(path).c_str(), W_OK | X_OK) != 0) return Create(path);
  OutputFile file(path, FileDescriptor(), Name::kStands);
  file.is_waiting_ = true;
  return file;
}

Result<OutputFile> OutputFile::Append(const NativePath& path) {
  const Result<FileInfo> info = GetFileInfo(path);
  if (info.ok()) {
    if (const Status refused = RefuseIrregular(info.value()); !refused.ok()) return refused.error();
  }
  Result<FileDescriptor> descriptor = OpenInPlace(path, O_APPEND);
  if (!descriptor.ok()) return descriptor.error();
  return OutputFile(path, std::move(descriptor.value()), Name::kStands);
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
  if (is_waiting_) failure_ = Open();
  if (failure_.ok()) failure_ = ledrix::WriteAll(descriptor_, bytes);
  if (failure_.ok() && hash_ != nullptr) hash_->Add(bytes);
}

void OutputFile::Flush() {
  WriteAll({buffer_.get(), used_});
  used_ = 0;
}

Status OutputFile::Close() {
  if (is_waiting_ || descriptor_.is_open()) {
    Flush();
    if (failure_.ok() && name_ == Name::kAtItsEnd) {
      failure_ = GiveName(descriptor_, path_);
      if (failure_.ok()) name_ = Name::kStands;
    }
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
  if (std::exchange(is_waiting_, false) || name_ != Name::kStands) return;
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
