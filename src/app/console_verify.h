// "ledrixc verify": the records of jobs.
#pragma once

#include "app/console_arguments.h"

namespace ledrix {

// Verifies each record and prints what it found; returns the exit status: 0 all is as it was, 1
// something changed, 2 trouble.
int RunVerifyCommand(const CommonArguments& common, const VerifyArguments& arguments);

}  // namespace ledrix
