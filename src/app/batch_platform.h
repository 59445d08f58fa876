// The desktop program without a window: messages go to stderr and, when nobody reads that, into a
// box on the desktop as well.
#pragma once

#include <QApplication>
#include <memory>

#include "app/console_platform.h"

namespace ledrix {

inline constexpr const char* kDesktopProgram = "ledrix";

class BatchPlatform : public ConsolePlatform {
 public:
  explicit BatchPlatform(JobRecord& job) : ConsolePlatform(kDesktopProgram, job) {}

  // The box appears when stderr is no terminal and a display answers that somebody can see. A
  // signal that asks to stop closes it, and no further one appears then. When its display goes away
  // the program ends with the status of trouble.
  MessageAnswer ShowMessage(const Message& message) override;

 private:
  // Made for the first box and not before.
  std::unique_ptr<QApplication> application_;
};

}  // namespace ledrix
