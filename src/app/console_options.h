// How the console program gets its options.
#pragma once

#include <optional>
#include <string>

#include "app/console_arguments.h"
#include "settings/option_record.h"

namespace ledrix {

// Fills the record from the settings that the command line names and then from its --set values,
// which are checked as the options dialog checks them. Returns what to tell the user when one of
// them is refused; the record is of no use then.
[[nodiscard]] std::optional<std::string> LoadConsoleOptions(const CommonArguments& arguments,
                                                            OptionRecord& options);

}  // namespace ledrix
