// A file without a name: nothing can meet it, and nothing stays of it after any ending.
#pragma once

#include "platform/error.h"
#include "platform/files.h"
#include "platform/native_path.h"
#include "platform/output_file.h"

namespace ledrix {

// Makes a file in a folder that only this program can see, open for reading and writing. Where the
// file system cannot make one without a name it gets an unused one, which is gone before the first
// byte. `shown_path` is what its writer calls it.
Result<OutputFile> CreateNamelessFile(const NativePath& folder, const NativePath& shown_path);

// Writes what is buffered and gives the file to be read from its beginning, through the descriptor
// that wrote it.
Result<InputFile> ReadBack(OutputFile file);

// The folder for temporary files; ends in a separator.
NativePath TemporaryFolder();

}  // namespace ledrix
