// What a directory information file and a walked tree tell of a file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/native_path.h"

namespace ledrix::modDComp {

// Texts are UTF-8, folders are written with "\" on every platform.
struct FileRecord {
  std::string folder;  // relative to the root, begins and ends with "\"
  std::string name;
  int64_t modified = 0;  // local time in civil seconds (local_time.h)
  uint64_t size = 0;     // bytes
};

// The name of a walked file in the file system's own bytes, of which a record's texts are what can
// be written.
struct ExactName {
  std::string_view folder;  // relative to the root, empty or ends in "/"
  std::string_view name;
  bool folder_differs = false;  // "?" stands for something in the record's folder
  bool name_differs = false;    // and in its name
};

// A root folder as it is written: "\" for each "/", without the closing one, its names as NameText
// has them. A root of the file system is the empty text.
std::string RootName(const NativePath& folder);

// The root name with a "\" at its end.
std::string DisplayRoot(const std::string& root_name);

// A name as it is written: "?" for CR, LF, "\", a character that Shift_JIS would write as "\", and
// each byte that is no valid UTF-8. Other characters that Shift_JIS lacks are kept.
std::string NameText(const std::string& name);

// True when a name or path holds a character that Shift_JIS lacks or a byte that is no valid UTF-8.
bool HoldsLackingCharacter(std::string_view name);

}  // namespace ledrix::modDComp
