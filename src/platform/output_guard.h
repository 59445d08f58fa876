// Keeps an output from destroying what a pair still needs.
#pragma once

#include <vector>

#include "platform/error.h"
#include "platform/files.h"
#include "platform/native_path.h"

namespace ledrix {

// The path behind a chain of links, also when nothing stands at its end yet.
NativePath BehindLinks(NativePath path);

// Why an output must not be written: it is one of the inputs (the same path, or the same file by
// another name) or one of the other outputs. Success when it may. An empty path among the others
// stands for none. A device such as /dev/null may take more than one output.
// `more_inputs` are further files that must stay.
Status RefuseOutput(const NativePath& output, const std::vector<NativePath>& inputs,
                    const std::vector<NativePath>& other_outputs, const FileSet& more_inputs = {});

}  // namespace ledrix
