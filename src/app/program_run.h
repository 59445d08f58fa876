// What both programs do around their work.
#pragma once

namespace ledrix {

// The exit status of a run that failed or was refused.
inline constexpr int kTroubleStatus = 2;

// Calls `run` with the arguments of main and returns its status. Descriptors 0 to 2 are open while
// it runs: no file is opened under a number to which messages go. Signals become requests to stop.
// A failure that nobody has caught is told, and so is the end of the memory, by one line on stderr
// that takes no memory; the status is then that of trouble.
int RunProgram(const char* name, int (*run)(int, char**), int argc, char** argv);

// Writes "NAME: TEXT" as one line to stderr. Takes no memory.
void WriteTrouble(const char* name, const char* text);

}  // namespace ledrix
