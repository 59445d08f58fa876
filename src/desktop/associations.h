// Which program the desktop associates with a type of files, by the desktop's lists: the files
// mimeapps.list of users and administrators, and the caches (mimeinfo.cache) of what launchers say
// of themselves.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "desktop/launcher.h"
#include "platform/native_path.h"

namespace ledrix {

// Where the lists are; of several folders the first counts most. Folders end in a separator.
struct AssociationFolders {
  std::vector<std::string> desktops;       // in lower case; DESKTOP-mimeapps.list goes first
  std::vector<NativePath> configurations;  // hold lists
  std::vector<NativePath> applications;    // hold lists, caches and launchers
};

// By $XDG_CURRENT_DESKTOP, $XDG_CONFIG_HOME, $XDG_CONFIG_DIRS, $XDG_DATA_HOME and $XDG_DATA_DIRS.
AssociationFolders DesktopAssociationFolders();

// The program for the first of the MIME types, the file's own before those it is a kind of, that
// has one: the default of the type, or else the first program that was associated with it and not
// taken away again. Programs whose launcher is missing, hidden or broken do not count.
std::optional<Launcher> FindAssociation(const AssociationFolders& folders,
                                        const std::vector<std::string>& mime_types);

}  // namespace ledrix
