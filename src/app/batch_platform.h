// The desktop program without a window: messages go to stderr and, when nobody reads that, into a
// box on the desktop as well.
#pragma once

#include "app/console_platform.h"

namespace ledrix {

inline constexpr const char* kDesktopProgram = "ledrix";

class BatchPlatform : public ConsolePlatform {
 public:
  explicit BatchPlatform(JobRecord& job) : ConsolePlatform(kDesktopProgram, job) {}

  // The box appears when stderr is no terminal and a display answers. The application object is
  // made at that moment and not before.
  MessageAnswer ShowMessage(const Message& message) override;
};

}  // namespace ledrix
