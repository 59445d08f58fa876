#include "app/batch_platform.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <cstdlib>

#include "ui/window_platform.h"

namespace ledrix {
namespace {

constexpr unsigned kSecondsForDisplay = 10;

bool IsSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

// The application object of this process, made when it is called for the first time.
void MakeApplication() {
  static char name[] = "ledrix";
  static char* arguments[] = {name, nullptr};
  static int count = 1;
  static const QApplication kApplication(count, arguments);
}

// An application object aborts the process when its display does not answer, so another process
// tries that first.
bool DisplayAnswers() {
  if (!IsSet("DISPLAY") && !IsSet("WAYLAND_DISPLAY")) return false;
  const pid_t child = fork();
  if (child == 0) {
    const rlimit no_core{0, 0};
    setrlimit(RLIMIT_CORE, &no_core);
    dup2(open("/dev/null", O_RDWR), STDERR_FILENO);
    alarm(kSecondsForDisplay);
    MakeApplication();
    _exit(0);
  }
  int status = 0;
  return child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status) &&
         WEXITSTATUS(status) == 0;
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
