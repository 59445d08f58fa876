// Signals as stop requests, and the temporary files that a program ended by one must not leave.
#pragma once

#include "platform/native_path.h"

namespace ledrix {

// Makes SIGINT, SIGTERM and SIGHUP a request to stop; a second one, and the other signals that end
// a program from outside, remove the temporary files and end it at once. A closed pipe and the file
// size limit become failed writes.
void InstallSignalHandlers();

// True after the first signal that asks to stop.
bool IsStopSignalled();

// The temporary files that a second signal removes; four at most at a time.
void NoteTemporaryFile(const NativePath& path);
void ForgetTemporaryFile(const NativePath& path);

}  // namespace ledrix
