// Whether there is a screen to show windows on, and boxes on it without a program of windows.
#pragma once

#include <functional>

namespace ledrix {

// True when an application object can be made. One aborts the process when its display does not
// answer, so another process tries that first.
bool DisplayAnswers();

// Calls `show` in another process, where an application object exists, and waits until it returns;
// a signal that asks to stop ends it at once. Whatever becomes of the display or of that process,
// this one goes on. Nothing is shown where no display answers or where nobody could see it.
void ShowOnDisplay(const std::function<void()>& show);

}  // namespace ledrix
