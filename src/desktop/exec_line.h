// How the Exec line of a launcher is cut into words.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "desktop/launcher.h"

namespace ledrix {

// Nothing when the line is broken: without a word, with an unbalanced quotation mark, with a
// backslash or a percent sign at its end, with an unknown code, or with a code in its first word.
std::optional<std::vector<LauncherWord>> CutExecLine(std::string_view line);

}  // namespace ledrix
