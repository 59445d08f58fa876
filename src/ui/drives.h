// The roots that a side's drive list offers.
#pragma once

#include <string>
#include <vector>

#include "platform/native_path.h"

namespace ledrix {

// The home folder and every volume that is mounted, ready and holds files of its own, each with a
// separator at its end, "/" first.
std::vector<NativePath> ListDrives();

// The index of the drive in which a folder lies: the longest root that it begins with, or -1.
int DriveOf(const std::vector<NativePath>& drives, const NativePath& folder);

}  // namespace ledrix
