// What options and controls do, in the words of their users, as the manual has it (manual.h): the
// tool tips, what a screen reader says, and the list of options that the console program prints.
#pragma once

#include <string_view>

#include "settings/option_key.h"

namespace ledrix {

struct HelpText {
  // An option's key; or a control's name, behind its window's and "." where windows share it, of an
  // array without the index.
  std::string_view key;
  std::string_view name;    // what it is called; "{side}" stands for Old or New, "{n}" for a number
  std::string_view values;  // of an option, with its default; else empty
  std::string_view text;    // one or two sentences: what it does to a result
  std::string_view keys;    // that do the same; may be empty
};

// All empty but the key when nothing is said of the option.
const HelpText& OptionHelp(OptionKey key);

// Of a control that edits no option, by its name and its window's; an index at its end is left out
// when the name with it has no text of its own. Null when nothing is said of it.
const HelpText* ControlHelp(std::string_view window, std::string_view name);

}  // namespace ledrix
