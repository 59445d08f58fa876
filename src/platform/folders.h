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

// An entry that the folder lists and that could not be looked at.
struct LostEntry {
  std::string name;
  Error error;
  bool is_folder = false;  // as far as the folder's list tells

  // True for a file that was removed after it was listed.
  bool IsGoneFile() const {
    return !is_folder && error.kind == ErrorKind::kSystem && error.system_number == ENOENT;
  }
};
using LostEntryHook = std::function<BadEntry(const LostEntry&)>;

// Every entry but "." and "..", hidden ones included, in byte order of their names. A link to
// nothing is left out: there is no file. `on_lost` says what becomes of the reading when an entry
// cannot be looked at. Fails as a whole when it says so, when the folder cannot be read, and when
// the folder is removed meanwhile. `on_entry` is called between the entries, of which there may be
// many.
Result<std::vector<FolderEntry>> ReadFolder(const NativePath& folder,
                                            const std::function<void()>& on_entry,
                                            const LostEntryHook& on_lost);
// The same with one answer for every such entry.
Result<std::vector<FolderEntry>> ReadFolder(
    const NativePath& folder, const std::function<void()>& on_entry = [] {},
    BadEntry bad_entry = BadEntry::kEndsReading);

// A folder's path without links and "..".
Result<NativePath> ResolveFolder(const NativePath& folder);

}  // namespace ledrix
