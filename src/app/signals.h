// Signals as stop requests.
#pragma once

namespace ledrix {

// Makes SIGINT, SIGTERM and SIGHUP a request to stop; a second one ends the program at once. A
// closed pipe and the file size limit become failed writes.
void InstallSignalHandlers();

// True after the first signal that asks to stop.
bool IsStopSignalled();

}  // namespace ledrix
