// The compare of one pair without a window, as the command line asks for it.
//
// Batch log (ledrixc.log in the program's folder), Shift_JIS, CR LF, one line a problem:
//   "yyyy/mm/dd hh:mm:ss" label path
//   label  "  OLD NOTHING         : "   the old file cannot be read
//          "  NEW NOTHING(削除扱) : "   the new file cannot be read
//          "  LIST OPEN ERROR     : "   the listing cannot be created
//          "  SETTINGS ERROR      : "   the settings cannot be read; nothing is compared
#pragma once

#include "jobs/command_line.h"
#include "run/run_services.h"

namespace ledrix {

// Logs that the settings cannot be read.
void LogUnreadSettings(const NativePath& program_folder, const NativePath& settings,
                       PlatformServices& platform);

// Compares the pair that the command line names and notes how that ended in the services. The
// options must be loaded; `program_folder` ends in a separator.
void BatchCompare(const CommandLineArgs& args, const NativePath& program_folder,
                  RunServices& services);

}  // namespace ledrix
