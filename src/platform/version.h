// The version of the programs.
#pragma once

namespace ledrix {

// Major, minor and revision, joined by ".".
const char* ProgramVersion();

}  // namespace ledrix
