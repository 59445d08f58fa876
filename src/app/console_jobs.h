// The jobs of the console program beside the compare.
#pragma once

#include "app/console_arguments.h"

namespace ledrix {

// Each runs one job and returns its exit status: 0, for dircomp 1 when something differs, or 2.
int RunStepsCommand(const CommonArguments& common, const StepsArguments& arguments);
int RunSnapshotCommand(const CommonArguments& common, const SnapshotArguments& arguments);
int RunDirCompCommand(const CommonArguments& common, const DirCompArguments& arguments);

}  // namespace ledrix
