// Starting other programs. No shell is ever asked: each argument reaches the program as it is.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/error.h"
#include "platform/native_path.h"

namespace ledrix {

// The file of a program: a name without a separator is looked for in $PATH. Empty when there is
// none that this user may run.
NativePath FindProgram(std::string_view name);

// Starts a program that lives on by itself, without standard input, in a folder (the current one
// when it is empty). The first argument is the program. Returns why it could not be started; how
// it ends is not waited for.
Status StartProgram(const std::vector<std::string>& arguments, const NativePath& folder);

}  // namespace ledrix
