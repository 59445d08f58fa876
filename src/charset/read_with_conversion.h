// Rewrites an input file into a temporary Shift_JIS copy under the chosen charset.
//
// The copy stands beside the file, named its path, "_" and the charset; a pipe is copied into the
// folder for temporary files. It holds one line for each line of the file, Shift_JIS, CR LF.
#pragma once

#include <vector>

#include "platform/error.h"
#include "platform/native_path.h"
#include "run/run_services.h"

namespace ledrix {

// The option CharsetCode that has every file judged and converted accordingly.
inline constexpr const char* kFullAuto = "FULLAUTO(遅め)";

// Converts one input file of the current pair. `inputs` are the files of the pair as they were
// named first, which no copy may replace. `path` names the file to convert; when a copy is made
// `path` names the copy afterwards, and the copy is in the list of temporary files from before its
// first byte. Without a chosen charset, for a file that is Shift_JIS already and for an empty one
// nothing is made. Returns why the file could not be read or the copy not be written. A stop
// request ends it early without a failure.
Status ReadWithConversion(RunServices& services, const std::vector<NativePath>& inputs,
                          NativePath& path);

}  // namespace ledrix
