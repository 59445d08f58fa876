// Keeps programs of this user from changing the files of a folder at the same time.
#pragma once

#include "platform/file_descriptor.h"
#include "platform/native_path.h"

namespace ledrix {

// Holds the folder while it lives. One that cannot be had within two seconds is done without: a
// program that stands still must not stop the others.
class FolderLock {
 public:
  explicit FolderLock(const NativePath& folder);

 private:
  FileDescriptor folder_;
};

}  // namespace ledrix
