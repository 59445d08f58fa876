// The temporary converted copies of the current pair.
#pragma once

#include <vector>

#include "platform/native_path.h"
#include "platform/services.h"

namespace ledrix {

class TempFileList {
 public:
  // `platform` hears of every file, so that it can remove them when the program is ended.
  explicit TempFileList(PlatformServices& platform) : platform_(platform) {}
  TempFileList(const TempFileList&) = delete;
  TempFileList& operator=(const TempFileList&) = delete;
  ~TempFileList() { DeleteAll(); }

  // To be called before the first byte of the file is written.
  void Add(const NativePath& path);

  // Deletes every file of the list and empties it.
  void DeleteAll();

 private:
  PlatformServices& platform_;
  std::vector<NativePath> paths_;
};

}  // namespace ledrix
