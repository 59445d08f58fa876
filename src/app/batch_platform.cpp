#include "app/batch_platform.h"

#include <unistd.h>

#include "app/display.h"
#include "ui/window_platform.h"

namespace ledrix {

MessageAnswer BatchPlatform::ShowMessage(const Message& message) {
  const MessageAnswer answer = ConsolePlatform::ShowMessage(message);
  if (isatty(STDERR_FILENO) != 1) {
    ShowOnDisplay([&message] { ShowMessageBox({message.text, message.title, message.icon}); });
  }
  return answer;
}

}  // namespace ledrix
