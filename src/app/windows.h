// The desktop program with its windows.
#pragma once

#include "jobs/command_line.h"

namespace ledrix {

// Shows the main window, with the files or folders that the command line names on its sides, and
// returns the exit status when it was closed. More than two names are refused, with a line on
// stderr and the status of trouble. REQUIRES: a display answers.
int RunWindows(const CommandLineArgs& args, int& argc, char** argv);

}  // namespace ledrix
