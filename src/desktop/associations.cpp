#include "desktop/associations.h"

#include <algorithm>
#include <cstdlib>
#include <set>

#include "desktop/key_file.h"
#include "platform/files.h"
#include "platform/program_folder.h"
#include "text/ascii.h"

namespace ledrix {
namespace {

constexpr size_t kMostListBytes = size_t{1} << 24;
constexpr const char* kDefaults = "Default Applications";
constexpr const char* kAdded = "Added Associations";
constexpr const char* kRemoved = "Removed Associations";
constexpr const char* kCached = "MIME Cache";

std::string Environment(const char* name, const char* default_text) {
  const char* const value = std::getenv(name);
  return value == nullptr || *value == '\0' ? default_text : value;
}

void AddFolders(const std::string& paths, std::string_view below, std::vector<NativePath>& to) {
  for (const std::string& path : SplitAt(paths, ':')) {
    if (path.starts_with('/')) to.push_back(AddBackslash(NativePath(path)) + below);
  }
}

// One folder's lists and cache.
struct Level {
  std::vector<KeyFile> lists;
  std::optional<KeyFile> cache;
};

// What the folders hold, read once for all MIME types of a file.
class Associations {
 public:
  explicit Associations(const AssociationFolders& folders) : folders_(folders) {
    for (const NativePath& folder : folders.configurations) ReadLevel(folder, false);
    for (const NativePath& folder : folders.applications) ReadLevel(folder, true);
  }

  std::optional<Launcher> Find(const std::string& mime_type) const {
    for (const Level& level : levels_) {
      for (const KeyFile& list : level.lists) {
        if (auto launcher = FirstOf(Programs(list, kDefaults, mime_type), {})) return launcher;
      }
    }
    std::set<std::string> removed;
    for (const Level& level : levels_) {
      for (const KeyFile& list : level.lists) {
        if (auto launcher = FirstOf(Programs(list, kAdded, mime_type), removed)) return launcher;
        const auto gone = Programs(list, kRemoved, mime_type);
        removed.insert(gone.begin(), gone.end());
      }
      if (!level.cache) continue;
      if (auto launcher = FirstOf(Programs(*level.cache, kCached, mime_type), removed)) {
        return launcher;
      }
    }
    return std::nullopt;
  }

 private:
  void ReadLevel(const NativePath& folder, bool has_cache) {
    Level level;
    const auto add_list = [&](const std::string& name) {
      if (auto list = KeyFile::Read(folder + name, kMostListBytes)) {
        level.lists.push_back(std::move(*list));
      }
    };
    for (const std::string& desktop : folders_.desktops) add_list(desktop + "-mimeapps.list");
    add_list("mimeapps.list");
    if (has_cache) level.cache = KeyFile::Read(folder + "mimeinfo.cache", kMostListBytes);
    levels_.push_back(std::move(level));
  }

  static std::vector<std::string> Programs(const KeyFile& list, const char* group,
                                           const std::string& mime_type) {
    return SplitAt(list.Get(group, mime_type).value_or(""), ';');
  }

  std::optional<Launcher> FirstOf(const std::vector<std::string>& programs,
                                  const std::set<std::string>& removed) const {
    for (const std::string& program : programs) {
      if (removed.count(program) > 0) continue;
      if (auto launcher = LauncherOf(program)) return launcher;
    }
    return std::nullopt;
  }

  // A launcher goes by its path below the folder with "-" for each separator.
  std::optional<Launcher> LauncherOf(std::string name) const {
    if (name.find('/') != std::string::npos || !name.ends_with(".desktop")) return std::nullopt;
    std::vector<std::string> names{name};
    for (size_t dash = name.find('-'); dash != std::string::npos; dash = name.find('-', dash + 1)) {
      name[dash] = '/';
      names.push_back(name);
    }
    for (const NativePath& folder : folders_.applications) {
      for (const std::string& file : names) {
        if (!GetFileInfo(folder + file).ok()) continue;
        std::optional<Launcher> launcher = ReadLauncher(folder + file);
        // A hidden launcher hides those of its name in the folders behind.
        return launcher && !launcher->is_hidden ? std::move(launcher) : std::nullopt;
      }
    }
    return std::nullopt;
  }

  const AssociationFolders& folders_;
  std::vector<Level> levels_;  // the first counts most
};

}  // namespace

AssociationFolders DesktopAssociationFolders() {
  AssociationFolders folders;
  for (const std::string& desktop : SplitAt(Environment("XDG_CURRENT_DESKTOP", ""), ':')) {
    if (desktop.empty() || desktop.find('/') != std::string::npos) continue;
    folders.desktops.push_back(AsciiLowered(desktop));
  }
  folders.configurations.push_back(UserConfigurationFolder());
  AddFolders(Environment("XDG_CONFIG_DIRS", "/etc/xdg"), "", folders.configurations);
  folders.applications.push_back(UserDataFolder() + "applications/");
  AddFolders(Environment("XDG_DATA_DIRS", "/usr/local/share:/usr/share"), "applications/",
             folders.applications);
  return folders;
}

std::optional<Launcher> FindAssociation(const AssociationFolders& folders,
                                        const std::vector<std::string>& mime_types) {
  const Associations associations(folders);
  for (const std::string& mime_type : mime_types) {
    if (std::optional<Launcher> launcher = associations.Find(mime_type)) return launcher;
  }
  return std::nullopt;
}

}  // namespace ledrix
