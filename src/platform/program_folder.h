// Where the program keeps its own files, and where the user's settings are.
#pragma once

#include "platform/native_path.h"

namespace ledrix {

// The program's own folder, with a separator at its end: $LEDRIX_HOME when it is set; the
// executable's folder when that holds a file "Ledrix.portable"; else $XDG_DATA_HOME/ledrix, by
// default below ~/.local/share. It is made, for this user alone, when it is missing.
NativePath ProgramFolder();

// The settings file: $XDG_CONFIG_HOME/ledrix/settings.ini, by default below ~/.config.
NativePath SettingsPath();

}  // namespace ledrix
