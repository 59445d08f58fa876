// Completion of the console program's command lines in bash.
#pragma once

#include <string>

namespace CLI {
class App;
}

namespace ledrix {

// A script that completes commands, options, keys of --set and the values of options of which the
// description lists them, separated by spaces; anything else is completed as a path.
std::string BashCompletion(const CLI::App& app);

}  // namespace ledrix
