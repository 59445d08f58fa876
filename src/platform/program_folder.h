// Where the program keeps its own files, and where the user's settings are.
#pragma once

#include <string_view>

#include "platform/native_path.h"

namespace ledrix {

// The program's own folder, with a separator at its end: $LEDRIX_HOME when it is set; the
// executable's folder when that holds a file "Ledrix.portable"; else $XDG_DATA_HOME/ledrix, by
// default below ~/.local/share. It is made, for this user alone, when it is missing.
NativePath ProgramFolder();

// Where the system keeps what comes with the program and is only read: share/ledrix beside the
// folder of the executable, with a separator at its end.
NativePath SharedFolder();

// A file or folder that comes with the program: in the program's own folder or, when only that has
// it, in the shared one. Where it would be in the program's own folder when neither has it.
NativePath FindProgramFile(std::string_view name);

// The folder of the send-to launchers, with a separator at its end: the user's
// ($XDG_DATA_HOME/ledrix/SendTo, by default below ~/.local/share) or the one that comes with the
// program.
enum class SendToOwner { kUser, kProgram };
NativePath SendToFolder(SendToOwner owner);

// $XDG_DATA_HOME, by default ~/.local/share, and $XDG_CONFIG_HOME, by default ~/.config, with a
// separator at their ends.
NativePath UserDataFolder();
NativePath UserConfigurationFolder();

// The settings file: $XDG_CONFIG_HOME/ledrix/settings.ini, by default below ~/.config.
NativePath SettingsPath();

}  // namespace ledrix
