// The desktop program without a window: messages go to stderr and, when nobody reads that, into a
// box on the desktop as well.
#pragma once

#include "app/console_platform.h"

namespace ledrix {

inline constexpr const char* kDesktopProgram = "ledrix";

class BatchPlatform : public ConsolePlatform {
 public:
  explicit BatchPlatform(JobRecord& job) : ConsolePlatform(kDesktopProgram, job) {}

  // The box appears when stderr is no terminal and a display answers that somebody can see. It
  // stands in a process of its own, so this one has no object of the desktop at any time.
  MessageAnswer ShowMessage(const Message& message) override;
};

}  // namespace ledrix
