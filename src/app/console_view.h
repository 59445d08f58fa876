// "ledrixc view" and "compare --view".
#pragma once

#include <vector>

#include "app/console_arguments.h"
#include "platform/native_path.h"

namespace ledrix {

// Shows a listing, or any text, on standard output. Returns the exit status.
int RunViewCommand(const ViewArguments& arguments);

// Shows those of the files that are listings, one behind the other. Returns the exit status.
int ShowListings(const std::vector<NativePath>& files, const ViewArguments& arguments);

}  // namespace ledrix
