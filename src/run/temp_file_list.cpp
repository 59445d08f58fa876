#include "run/temp_file_list.h"

#include "platform/files.h"

namespace ledrix {

void TempFileList::Add(const NativePath& path) {
  paths_.push_back(path);
  platform_.TemporaryFileMade(path);
}

void TempFileList::DeleteAll() {
  for (const NativePath& path : paths_) {
    RemoveFile(path).Ignore();
    platform_.TemporaryFileGone(path);
  }
  paths_.clear();
}

}  // namespace ledrix
