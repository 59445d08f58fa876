// Whether there is a screen to show windows on.
#pragma once

namespace ledrix {

// True when an application object can be made. One aborts the process when its display does not
// answer, so another process tries that first.
bool DisplayAnswers();

}  // namespace ledrix
