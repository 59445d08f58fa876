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
#include "platform/file_descriptor.h"
#include "platform/native_path.h"
#include "platform/sha256.h"

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

// True when both tell of the same size and the same time of modification.
inline bool HaveSameStamp(const FileInfo& a, const FileInfo& b) {
  return a.size == b.size && a.modified.tv_sec == b.modified.tv_sec &&
         a.modified.tv_nsec == b.modified.tv_nsec;
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

// Why a file is not read or replaced as a whole: a folder, a device, a socket or a pipe.
Status RefuseIrregular(const FileInfo& info);

// Success while the file that `seen` told of still stands at the path and is as it was then.
// Nothing but a regular file is looked at again.
Status CheckUnchanged(const NativePath& path, const FileInfo& seen);

// The bytes of a regular file; anything else, a pipe as well, is refused without opening it.
Result<std::string> ReadWholeFile(const NativePath& path);

class InputFile;

// True when what is left to read of both files is the same, byte for byte, and both could be read
// to their ends.
bool SameContents(InputFile& a, InputFile& b);

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

  // The same at a position in bytes; where Read goes on does not change, and nothing is hashed.
  // REQUIRES: a regular file.
  Result<size_t> ReadAt(uint64_t position, char* buffer, size_t capacity) const;

  // `hook` is called before every block that is read: a line may be as long as the file.
  void OnBlock(BlockHook hook) { on_block_ = std::move(hook); }
  // Adds all that is read from now on to a hash, which must outlive the file.
  void HashInto(Sha256& hash) { hash_ = &hash; }

 private:
  InputFile(FileDescriptor descriptor, FileInfo info)
      : descriptor_(std::move(descriptor)), info_(info) {}

  FileDescriptor descriptor_;
  FileInfo info_;
  BlockHook on_block_;
  Sha256* hash_ = nullptr;
};

}  // namespace ledrix
