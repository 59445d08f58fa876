// Files of groups of keys, as launchers and the desktop's lists of associations are written.
//
// File format, one item a line:
//   group    "[" name "]"      the values that follow belong to it
//   value    key "=" text      spaces and tabs around the key and before the text do not count; of
//                              several values under one key, and of several groups of one name,
//                              the first counts
//   anything else, comments ("#") among it, is passed over
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/native_path.h"

namespace ledrix {

class KeyFile {
 public:
  // Nothing unless a regular file of at most `most_bytes` bytes, without a NUL, can be read. A
  // pipe or a device is not waited for.
  static std::optional<KeyFile> Read(const NativePath& path, size_t most_bytes);

  // The text as it stands in the file; nothing when group or key is missing.
  std::optional<std::string> Get(std::string_view group, std::string_view key) const;

  // True when somebody other than this user and the system's administrator owns the file or may
  // write to it; as it was when it was read.
  bool is_open_to_others() const { return is_open_to_others_; }

 private:
  void Parse(std::string_view bytes);

  std::map<std::pair<std::string, std::string>, std::string> values_;  // by group and key
  bool is_open_to_others_ = true;
};

// The same of a folder or any other file; true as well when it cannot be looked at.
bool IsOpenToOthers(const NativePath& path);

// A text of a key file with its escapes (\s \n \t \r \\) resolved; any other stays as it is.
std::string UnescapeValue(std::string_view text);

}  // namespace ledrix
