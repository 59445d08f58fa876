#include "platform/folders.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
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
    const Error error = Error::System(errno);
    const bool dangling = result.is_link && (error.IsMissing() || error.system_number == ELOOP) &&
                          fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0;
    if (dangling) return std::optional<FolderEntry>();
    return error;
  }
  result.info = ToFileInfo(status);
  return std::optional<FolderEntry>(std::move(result));
}

// A folder that is removed while it is read just ends its list.
bool WasRemoved(int folder, const NativePath& path) {
  struct stat status {};
  if (fstat(folder, &status) != 0 || status.st_nlink > 0) return false;
  // Some file systems count no links at all.
  const Result<FileInfo> info = GetFileInfo(path);
  return !info.ok() || !IsSameFile(info.value(), ToFileInfo(status));
}

}  // namespace

Result<std::vector<FolderEntry>> ReadFolder(const NativePath& folder,
                                            const std::function<void()>& on_entry,
                                            const LostEntryHook& on_lost) {
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
    if (found.ok()) {
      if (found.value()) entries.push_back(std::move(*found.value()));
    } else if (on_lost({entry->d_name, found.error(), entry->d_type == DT_DIR}) ==
               BadEntry::kEndsReading) {
      return found.error();
    }
  }
  if (WasRemoved(dirfd(open_folder.get()), folder)) return Error::System(ENOENT);
  std::sort(entries.begin(), entries.end(),
            [](const FolderEntry& a, const FolderEntry& b) { return a.name < b.name; });
  return entries;
}

Result<std::vector<FolderEntry>> ReadFolder(const NativePath& folder,
                                            const std::function<void()>& on_entry,
                                            BadEntry bad_entry) {
  return ReadFolder(folder, on_entry, [bad_entry](const LostEntry&) { return bad_entry; });
}

Result<NativePath> ResolveFolder(const NativePath& folder) {
  const std::unique_ptr<char, decltype(&std::free)> real(realpath(folder.c_str(), nullptr),
                                                         &std::free);
  if (real == nullptr) return Error::System(errno);
  return NativePath(real.get());
}

}  // namespace ledrix
