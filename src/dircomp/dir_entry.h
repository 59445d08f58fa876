// What a directory information file and a walked tree tell of a file.
#pragma once

#include <cstdint>
#include <string>

#include "platform/native_path.h"

namespace ledrix::modDComp {

// Texts are UTF-8, folders are written with "\" on every platform.
struct FileRecord {
  std::string folder;  // relative to the root, begins and ends with "\"
  std::string name;
  int64_t modified = 0;  // local time in civil seconds (local_time.h)
  uint64_t size = 0;     // bytes
};

// A root folder as it is written: "\" for each "/", without the closing one. A root of the file
// system is the empty text. CR and LF become "?".
std::string RootName(const NativePath& folder);

// The root name with a "\" at its end.
std::string DisplayRoot(const std::string& root_name);

// A name as it is written: "?" for CR, LF, "\" and each byte that is no valid UTF-8.
std::string NameText(const std::string& name);

}  // namespace ledrix::modDComp
