// The desktop program with its windows.
#pragma once

#include "jobs/command_line.h"
#include "settings/settings_store.h"

namespace ledrix {

// The user's settings. When they cannot be read that is told on stderr, and every value is its
// default; that there are none yet is nothing to tell.
SettingsStore LoadUserSettings();

// Shows the main window, with the two files or folders that the command line names on its sides,
// and returns the exit status when it was closed. REQUIRES: a display answers.
int RunWindows(const CommandLineArgs& args, int& argc, char** argv);

}  // namespace ledrix
