// "ledrixc compare": two files compared from the command line.
#pragma once

#include "app/console_arguments.h"

namespace ledrix {

// Compares and reports; returns the exit status: 0 nothing differs, 1 something differs, 2 trouble.
int RunCompareCommand(const CommonArguments& common, const CompareArguments& arguments);

}  // namespace ledrix
