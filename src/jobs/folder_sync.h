// How the folder of one side follows the folder of the other.
#pragma once

#include <optional>

#include "platform/native_path.h"

namespace ledrix {

// One side went from the folder `from` to the folder `to`; returns where the other side, in
// `other`, ends up by going the same way: up by the folders that were left, whose names must be the
// same there without regard to letter case, then down by the names that were entered. Nothing when
// it cannot go that way. All folders end in a separator; whether the result exists is not looked
// at.
std::optional<NativePath> CorrespondingFolder(const NativePath& from, const NativePath& to,
                                              const NativePath& other);

}  // namespace ledrix
