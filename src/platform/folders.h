// The entries of a folder, for lists and for walks through a tree.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/error.h"
#include "platform/files.h"
#include "platform/native_path.h"

namespace ledrix {

struct FolderEntry {
  std::string name;
  FileInfo info;  // of the file behind a link
  bool is_link = false;
};

// What becomes of a reading when one entry cannot be looked at.
enum class BadEntry { kEndsReading, kIsLeftOut };

// Every entry but "." and "..", hidden ones included, in byte order of their names. A link to
// nothing is left out: there is no file. Fails as a whole when the folder or, unless
// such entries are left out, one of its files cannot be looked at. `on_entry` is called between the
// entries, of which there may be many.
Result<std::vector<FolderEntry>> ReadFolder(
    const NativePath& folder, const std::function<void()>& on_entry = [] {},
    BadEntry bad_entry = BadEntry::kEndsReading);

}  // namespace ledrix
