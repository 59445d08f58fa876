// "ledrixc judge": the character codes of files.
#pragma once

#include "app/console_arguments.h"

namespace ledrix {

// Prints for each file its code name, a tab and its path as given; returns the exit status: 0, or
// 2 when a file could not be read.
int RunJudgeCommand(const CommonArguments& common, const JudgeArguments& arguments);

}  // namespace ledrix
