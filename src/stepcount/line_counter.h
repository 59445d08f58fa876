// Counts the lines of a file, which are called steps.
#pragma once

#include "run/run_services.h"

namespace ledrix::modStep {

// A line ends at CR or CR LF; a lone LF ends none; a last line without an end counts. Yields once
// a line; a stop request makes the count 0. Returns why the file could not be read.
Result<int64_t> CountFileLines(RunServices& services, const NativePath& path);

}  // namespace ledrix::modStep
