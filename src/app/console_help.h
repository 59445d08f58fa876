// What the programs say of themselves, out of the manual, and what the console program says of
// command lines that it does not understand.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace ledrix {

// The names of the console program's commands.
std::span<const std::string_view> CommandNames();

// How a command is used, with an example; of all commands for a name that is none.
std::string CommandHelpText(std::string_view command);

// How the desktop program is used.
std::string ProgramHelpText();

// What --set takes: each key with its values, its default and what it does.
std::string OptionListText();

// "（compare ではありませんか）" when one of the names is much like the one that was typed, else
// empty.
std::string DidYouMean(std::string_view typed, std::span<const std::string_view> names);

}  // namespace ledrix
