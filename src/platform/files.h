// Files: what they are, reading them in blocks, writing them with every write checked.
#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/error.h"
#include "platform/native_path.h"

namespace ledrix {

enum class FileKind { kRegular, kFolder, kPipe, kNull, kOther };  // kNull: /dev/null

// What the file system tells of a file; links are followed.
struct FileInfo {
  FileKind kind = FileKind::kOther;
  uint64_t size = 0;  // bytes; 0 for anything but a regular file
  timespec modified{};
  dev_t device = 0;
  ino_t inode = 0;
};

// Why the call of the system before failed: its errno.
Error LastError();

Result<FileInfo> GetFileInfo(const NativePath& path);
FileInfo ToFileInfo(const struct stat& status);

// True for what takes any number of outputs at once.
inline bool IsDevice(const FileInfo& info) {
  return info.kind == FileKind::kOther || info.kind == FileKind::kNull;
}

// True when both tell of one and the same file.
inline bool IsSameFile(const FileInfo& a, const FileInfo& b) {
  return a.device == b.device && a.inode == b.inode;
}

// Files, whatever their names. They are looked at when a file is looked for for the first time.
class FileSet {
 public:
  // A path without a file adds nothing.
  void Add(NativePath path) { waiting_.push_back(std::move(path)); }
  bool Holds(const FileInfo& file) const;
  // False for a path without a file.
  bool Holds(const NativePath& path) const;

 private:
  mutable std::vector<NativePath> waiting_;
  mutable std::set<std::pair<dev_t, ino_t>> files_;
};

// True when the path, a trailing separator or not, names an existing folder.
bool IsFolder(const NativePath& path);

// The path without half-width spaces at its ends is tested: false when it is empty; for one that
// ends in a separator, IsFolder; otherwise true when the file can be opened for reading.
bool PathExists(const NativePath& path);

// True when this user may write the file that stands at the path.
bool MayWrite(const NativePath& path);

// Removes a regular file (or a link to one); anything else, such as /dev/null, stays. A file that
// does not exist is no error.
Status RemoveFile(const NativePath& path);

// The path without links and ".."; empty when it does not exist.
NativePath RealPath(const NativePath& path);

// Makes a folder and those above it that are missing, for this user alone (mode 0700).
Status MakePrivateFolder(const NativePath& path);

// Replaces a file's content as a whole: after a failure, a crash or a full disk the old content
// stands. A link at `path` stays a link; anything but a regular file is refused. The file keeps its
// mode and, where the system allows it, its owner and group; a new one is this user's alone.
Status ReplaceFile(const NativePath& path, std::string_view bytes);

// The bytes of a regular file; anything else, a pipe as well, is refused without opening it.
Result<std::string> ReadWholeFile(const NativePath& path);

class InputFile;

// True when what is left to read of both files is the same, byte for byte, and both could be read
// to their ends.
bool SameContents(InputFile& a, InputFile& b);

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

// Work to be done between the blocks of a file; none when empty.
using BlockHook = std::function<void()>;

// A file open for reading, block by block. A file that shrinks meanwhile ends early.
class InputFile {
 public:
  // A regular file or a pipe; a folder, a device or a socket is refused.
  static Result<InputFile> Open(const NativePath& path);
  // The same for a path that GetFileInfo has told to be a regular file.
  static Result<InputFile> OpenRegular(const NativePath& path);
  // A file that is open already and stands where reading is to begin.
  static Result<InputFile> OverDescriptor(FileDescriptor descriptor);

  const FileInfo& info() const { return info_; }

  // Fills `buffer` from the file; fewer bytes than `capacity` are no sign of the end. Returns the
  // number of bytes read, 0 at the end of the file. A signal that is handled ends a wait for a
  // pipe with the error EINTR, here and when a file is opened or written.
  Result<size_t> Read(char* buffer, size_t capacity);

  // `hook` is called before every block that is read: a line may be as long as the file.
  void OnBlock(BlockHook hook) { on_block_ = std::move(hook); }

 private:
  InputFile(FileDescriptor descriptor, FileInfo info)
      : descriptor_(std::move(descriptor)), info_(info) {}

  FileDescriptor descriptor_;
  FileInfo info_;
  BlockHook on_block_;
};

// A file open for writing through a buffer. The first failure is kept and makes all that follows
// do nothing, so a writer may look for it at the end; only a closed file without a failure holds
// all that was written.
class OutputFile {
 public:
  // Creates the file or empties an existing one.
  static Result<OutputFile> Create(const NativePath& path);
  // The same for a file that may be discarded unwritten: one that can be expected to succeed is
  // created only when its first bytes leave the buffer, at the latest when it is closed.
  static Result<OutputFile> CreateWhenNeeded(const NativePath& path);
  // Creates the file or writes behind the end of an existing one. Anything but a regular file is
  // refused without opening it.
  static Result<OutputFile> Append(const NativePath& path);
  // A file that is open already; `path` is what it is called.
  static OutputFile OverDescriptor(NativePath path, FileDescriptor descriptor) {
    return OutputFile(std::move(path), std::move(descriptor));
  }

  OutputFile(OutputFile&&) noexcept = default;
  OutputFile& operator=(OutputFile&&) noexcept = default;
  ~OutputFile() = default;

  const NativePath& path() const { return path_; }
  const Status& failure() const { return failure_; }

  void Write(std::string_view bytes) {
    if (bytes.size() <= capacity_ - used_) {
      Buffer(bytes);
    } else {
      WriteThrough(bytes);
    }
  }

  // Room for `size` bytes, to be filled before the next call; they count as written. REQUIRES: size
  // is at most kMostToFill.
  static constexpr size_t kMostToFill = 4096;
  char* WriteInPlace(size_t size) {
    if (size > capacity_ - used_) MakeRoom();
    return buffer_.get() + std::exchange(used_, used_ + size);
  }

  // Writes what is buffered, closes and returns the first failure of all.
  Status Close();
  // Writes what is buffered and gives the descriptor away, or the first failure of all.
  Result<FileDescriptor> Release();

  // `hook` is called after every block that is written but the last.
  void OnBlock(BlockHook hook) { on_block_ = std::move(hook); }

  // Closes without regard to failures and removes the file if it is a regular one.
  void Discard();

 private:
  // Most outputs are small; one that outgrows its first buffer is written in larger blocks.
  static constexpr size_t kFirstBufferSize = size_t{1} << 16;
  static constexpr size_t kBufferSize = size_t{1} << 18;

  static Result<FileDescriptor> Open(const NativePath& path, int flags, unsigned mode);
  static Result<OutputFile> Make(const NativePath& path, Result<FileDescriptor> descriptor);
  OutputFile(NativePath path, FileDescriptor descriptor)
      : path_(std::move(path)), descriptor_(std::move(descriptor)) {}
  void Buffer(std::string_view bytes);
  void WriteThrough(std::string_view bytes);
  void MakeRoom();
  void WriteAll(std::string_view bytes);
  void Flush();
  void CreateNow();

  NativePath path_;
  FileDescriptor descriptor_;
  bool is_waiting_ = false;  // not yet created
  size_t capacity_ = kFirstBufferSize;
  std::unique_ptr<char[]> buffer_{new char[kFirstBufferSize]};
  size_t used_ = 0;
  Status failure_;
  BlockHook on_block_;
};

}  // namespace ledrix
