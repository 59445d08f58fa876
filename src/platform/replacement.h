// Replaces a file as a whole: after a failure, a crash or a full disk the old content stands.
#pragma once

#include <string_view>
#include <utility>

#include "platform/error.h"
#include "platform/file_descriptor.h"
#include "platform/native_path.h"

namespace ledrix {

// A file being made that takes another one's place when it is complete. Without Commit() nothing
// stays of it; a program that is killed may leave a file of ReplacementStem's name.
class Replacement {
 public:
  // The mode of the file: for this user alone, or as any new file has it.
  enum class Mode { kPrivate, kOfNewFiles };
  static Result<Replacement> Begin(const NativePath& path, Mode mode = Mode::kPrivate);
  Replacement(Replacement&&) noexcept = default;
  Replacement& operator=(Replacement&&) = delete;
  ~Replacement();

  // Where the content is to be written.
  const FileDescriptor& descriptor() const { return descriptor_; }

  // Puts the file into its place, also that of a link; into one that is to be free only when it is,
  // else it stays where it was made and the error is EEXIST. With `synced` content and name stand
  // on the disk when this returns.
  enum class Place { kAny, kFree };
  Status Commit(bool synced, Place place = Place::kAny);
  // Another place in the same folder.
  void Rename(NativePath path) { path_ = std::move(path); }

 private:
  Replacement(NativePath path, FileDescriptor descriptor, NativePath temporary)
      : path_(std::move(path)),
        descriptor_(std::move(descriptor)),
        temporary_(std::move(temporary)) {}
  Status TakePlace(Place place);

  NativePath path_;
  FileDescriptor descriptor_;
  NativePath temporary_;  // empty: the file has no name yet
};

// Replaces a file's content. A link at `path` stays a link; anything but a regular file is refused.
// The file keeps its mode and, where the system allows it, its owner and group; a new one is this
// user's alone.
Status ReplaceFile(const NativePath& path, std::string_view bytes);

// Removes what programs that were killed while they replaced this file have left beside it a day
// ago or earlier.
void RemoveOldReplacements(const NativePath& path);

}  // namespace ledrix
