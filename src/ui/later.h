// Work that has to wait until the event handler that asks for it has returned.
#pragma once

#include <functional>

class QObject;

namespace ledrix {

// Does the work from the event loop, unless `owner` is gone by then.
void DoLater(QObject& owner, std::function<void()> work);

}  // namespace ledrix
