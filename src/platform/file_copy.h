// Copies of whole files.
#pragma once

#include <functional>

#include "platform/error.h"
#include "platform/native_path.h"

namespace ledrix {

// Makes `to` a copy of the regular file `from`, with its modification time and its permissions.
// What stood at `to` is replaced when the copy is complete; after a failure it stands as it was.
// A file that changes while it is copied is a failure.
// `on_block` is called between blocks.
Status CopyFile(
    const NativePath& from, const NativePath& to, const std::function<void()>& on_block = [] {});

}  // namespace ledrix
