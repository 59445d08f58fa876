// Text that is written where a terminal may read it.
#pragma once

#include <string>
#include <string_view>

namespace ledrix {

// The UTF-8 text with "?" for each control character (U+0000-001F, U+007F-009F) and for each byte
// 80-9F that belongs to no valid character: a terminal would obey them.
std::string WithoutControls(std::string_view text);

// The text as it may be written to a descriptor: WithoutControls where that is a terminal, the same
// bytes anywhere else. A name in it may hold anything.
std::string ShownOn(int descriptor, const std::string& text);

}  // namespace ledrix
