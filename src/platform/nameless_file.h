// Files that have no name, or none yet.
#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <optional>

#include "platform/error.h"
#include "platform/file_descriptor.h"
#include "platform/native_path.h"

namespace ledrix {

// Opens a file without a name in a folder, for reading and writing; nothing stays of it unless
// GiveName names it. Nothing where the system cannot make such a file, or could not name it.
// `mode` is cut by the process's mask, as for any new file.
Result<std::optional<FileDescriptor>> OpenNameless(const NativePath& folder, unsigned mode);

// Gives a file the mode of the one it replaces and, as far as the system allows, its owner.
Status TakeOver(const FileDescriptor& descriptor, const struct stat& replaced);

// What replaces a file has, until it does, the name of ReplacementStem(path) and this many letters
// and digits behind it.
inline constexpr size_t kReplacementLetters = 6;
// The path, cut where its name would get too long, and ".".
NativePath ReplacementStem(const NativePath& path);

// Gives a file of OpenNameless its name, at once and whole. A regular file or a link that stands
// there is replaced; anything else stays and is the error EEXIST.
Status GiveName(const FileDescriptor& descriptor, const NativePath& path);
// The same where nothing may stand; the error is EEXIST.
Status GiveFreeName(const FileDescriptor& descriptor, const NativePath& path);

}  // namespace ledrix
