#include "app/batch_platform.h"

#include <unistd.h>

#include <QApplication>

#include "app/display.h"
#include "ui/window_platform.h"

namespace ledrix {
namespace {

// The application object of this process, made when it is called for the first time.
void MakeApplication() {
  static char name[] = "ledrix";
  static char* arguments[] = {name, nullptr};
  static int count = 1;
  static const QApplication kApplication(count, arguments);
}

}  // namespace

MessageAnswer BatchPlatform::ShowMessage(const Message& message) {
  const MessageAnswer answer = ConsolePlatform::ShowMessage(message);
  if (isatty(STDERR_FILENO) == 1 || !DisplayAnswers()) return answer;
  MakeApplication();
  ShowMessageBox({message.text, message.title, message.icon});
  return answer;
}

}  // namespace ledrix
