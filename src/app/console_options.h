// How the console program gets its options.
#pragma once

#include <optional>
#include <string>

#include "app/console_arguments.h"
#include "settings/option_record.h"

namespace ledrix {

// Fills the record from the settings that the command line names, by default the user's own, and
// then from its --set values, which are checked as the options dialog checks them. Returns what to
// tell the user when one of them is refused; the record is of no use then.
[[nodiscard]] std::optional<std::string> LoadConsoleOptions(const CommonArguments& arguments,
                                                            OptionRecord& options);

// Puts the charset that --charset names into the record: "none", "auto" or a name; empty leaves it
// as it is. Returns what to tell the user when it is not available.
[[nodiscard]] std::optional<std::string> ChooseCharset(const std::string& charset,
                                                       OptionRecord& options);

}  // namespace ledrix
