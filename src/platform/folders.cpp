#include "platform/folders.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <optional>

namespace ledrix {
namespace {

struct CloseFolder {
  void operator()(DIR* folder) const { closedir(folder); }
};

// Nothing for a link to nothing.
Result<std::optional<FolderEntry>> LookAt(int folder, const dirent& entry) {
  FolderEntry result{entry.d_name, {}, entry.d_type == DT_LNK};
  struct stat status {};
  if (entry.d_type == DT_UNKNOWN) {
    if (fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) != 0) {
      return Error::System(errno);
    }
    result.is_link = S_ISLNK(status.st_mode);
  }
  if (fstatat(folder, entry.d_name, &status, 0) != 0) {
    const bool dangling = result.is_link && (errno == ENOENT || errno == ELOOP || errno == ENOTDIR);
    if (dangling) return std::optional<FolderEntry>();
    return Error::System(errno);
  }
  result.info = ToFileInfo(status);
  return std::optional<FolderEntry>(std::move(result));
}

}  // namespace

Result<std::vector<FolderEntry>> ReadFolder(const NativePath& folder,
                                            const std::function<void()>& on_entry,
                                            BadEntry bad_entry) {
  const std::unique_ptr<DIR, CloseFolder> open_folder(opendir(folder.c_str()));
  if (open_folder == nullptr) return Error::System(errno);
  std::vector<FolderEntry> entries;
  while (true) {
    errno = 0;
    const dirent* const entry = readdir(open_folder.get());
    if (entry == nullptr && errno != 0) return Error::System(errno);
    if (entry == nullptr) break;
    const std::string_view name = entry->d_name;
    if (name == "." || name == "..") continue;
    on_entry();
    Result<std::optional<FolderEntry>> found = LookAt(dirfd(open_folder.get()), *entry);
    if (!found.ok() && bad_entry == BadEntry::kEndsReading) return found.error();
    if (found.ok() && found.value()) entries.push_back(std::move(*found.value()));
  }
  std::sort(entries.begin(), entries.end(),
            [](const FolderEntry& a, const FolderEntry& b) { return a.name < b.name; });
  return entries;
}

}  // namespace ledrix
