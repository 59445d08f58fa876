// What the windows of a run share.
#pragma once

#include "platform/native_path.h"

namespace ledrix {

class DesktopActions;
class SettingsStore;
class WindowPlatform;
struct JobRecord;
struct OptionRecord;

// The records and services of a run with windows. The owner makes one of each.
struct WindowProgram {
  OptionRecord& options;
  JobRecord& job;
  SettingsStore& store;  // loaded
  WindowPlatform& platform;
  DesktopActions& actions;
  NativePath folder;  // the program's own, with a separator at its end
};

}  // namespace ledrix
