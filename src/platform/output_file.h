// Writing files with every write checked.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>

#include "platform/error.h"
#include "platform/file_descriptor.h"
#include "platform/files.h"
#include "platform/native_path.h"

namespace ledrix {

// A file open for writing through a buffer. The first failure is kept and makes all that follows
// do nothing, so a writer may look for it at the end; only a closed file without a failure holds
// all that was written.
//
// A new file has no name until it is closed whole, so that nobody finds half of it, whatever ends
// the program; what stood at its path is gone when it is created. A file with more than one name,
// behind a link or of another user is written in place, and so is any where the system knows no
// files without a name.
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
  // A file without a name that is open already; `path` is what it is called.
  static OutputFile OverDescriptor(NativePath path, FileDescriptor descriptor) {
    return OutputFile(std::move(path), std::move(descriptor), Name::kNever);
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
  static constexpr size_t kMostToFill = (size_t{1} << 15) + 64;
  char* WriteInPlace(size_t size) {
    if (size > capacity_ - used_) MakeRoom();
    return buffer_.get() + std::exchange(used_, used_ + size);
  }
  // Takes back the last `size` bytes of the room given last.
  void GiveBack(size_t size) { used_ -= size; }

  // Writes what is buffered, gives the file its name, closes it and returns the first failure.
  Status Close();
  // Writes what is buffered and gives the descriptor away, or the first failure of all.
  Result<FileDescriptor> Release();

  // `hook` is called after every block that is written but the last.
  void OnBlock(BlockHook hook) { on_block_ = std::move(hook); }
  // Adds all that is written from now on to a hash, which must outlive the file.
  void HashInto(Sha256& hash) { hash_ = &hash; }

  // Closes without regard to failures; no regular file stands at the path then.
  void Discard();

 private:
  // Most outputs are small; one that outgrows its first buffer is written in larger blocks.
  static constexpr size_t kFirstBufferSize = size_t{1} << 16;
  static constexpr size_t kBufferSize = size_t{1} << 18;

  enum class Name { kStands, kAtItsEnd, kNever };

  OutputFile(NativePath path, FileDescriptor descriptor, Name name)
      : path_(std::move(path)), descriptor_(std::move(descriptor)), name_(name) {}
  Status Open();
  void Buffer(std::string_view bytes);
  void WriteThrough(std::string_view bytes);
  void MakeRoom();
  void WriteAll(std::string_view bytes);
  void Flush();

  NativePath path_;
  FileDescriptor descriptor_;
  Name name_;                // whether the path is the file's
  bool is_waiting_ = false;  // not yet created
  size_t capacity_ = kFirstBufferSize;
  std::unique_ptr<char[]> buffer_{new char[kFirstBufferSize]};
  size_t used_ = 0;
  Status failure_;
  BlockHook on_block_;
  Sha256* hash_ = nullptr;
};

}  // namespace ledrix
