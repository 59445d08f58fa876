// A folder for what is needed only for a while.
#pragma once

#include <utility>

#include "platform/error.h"
#include "platform/native_path.h"

namespace ledrix {

class ScratchFolder {
 public:
  // Makes one in the folder for temporary files, for this user alone.
  static Result<ScratchFolder> Make();
  ScratchFolder(ScratchFolder&& other) noexcept : path_(std::exchange(other.path_, {})) {}
  ScratchFolder& operator=(ScratchFolder&&) = delete;
  // Removes it with all that it holds.
  ~ScratchFolder();

  const NativePath& path() const { return path_; }  // ends in a separator

 private:
  explicit ScratchFolder(NativePath path) : path_(std::move(path)) {}
  NativePath path_;
};

}  // namespace ledrix
