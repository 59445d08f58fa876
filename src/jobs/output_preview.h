// What the main window tells of the next text compare's outputs.
#pragma once

#include <string>

#include "jobs/file_sides.h"
#include "run/run_services.h"

namespace ledrix {

// " LIST=" and the path of the listing that a compare of the two sides would write, then the
// further outputs that are wanted.
std::string OutputPreview(const OptionRecord& options, const OutputChoices& choices,
                          const FileSides& sides);

// While the outputs go beside a side's file, ElseOutputDir is that side's folder.
void FollowOutputSide(OutputChoices& choices, const FileSides& sides);

// The path of the output that an entry of the result list tells of: of the entry itself when it
// opens with "(", otherwise of the one above it. Empty when there is none.
NativePath OutputOfEntry(const std::vector<std::string>& entries, size_t index);

// True for the second entry of an output that failed.
bool TellsOfFailure(const std::string& entry);

}  // namespace ledrix
