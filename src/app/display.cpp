#include "app/display.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <csignal>
#include <cstdlib>
#include <ctime>

#include "app/signals.h"

namespace ledrix {
namespace {

constexpr unsigned kSecondsForDisplay = 10;
constexpr timespec kBetweenLooks = {0, 50'000'000};

bool IsSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

// A platform that was named, such as one for tests, needs no display.
bool IsDisplayNamed() {
  return IsSet("DISPLAY") || IsSet("WAYLAND_DISPLAY") || IsSet("QT_QPA_PLATFORM");
}

// Platforms on which nobody sees a window.
bool IsVisible() {
  const QString platform = QGuiApplication::platformName();
  return platform != "offscreen" && !platform.startsWith("minimal");
}

// Ends the process with 0 when an application object can be made and `show` has returned.
template <class Application>
[[noreturn]] void RunOnDisplay(const std::function<void()>& show) {
  const rlimit no_core{0, 0};
  setrlimit(RLIMIT_CORE, &no_core);
  dup2(open("/dev/null", O_RDWR), STDERR_FILENO);
  alarm(kSecondsForDisplay);
  char name[] = "ledrix";
  char* arguments[] = {name, nullptr};
  int count = 1;
  const Application application(count, arguments);
  alarm(0);
  if (show && IsVisible()) show();
  _exit(0);
}

void EndWithParent() {
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) std::signal(number, SIG_DFL);
  prctl(PR_SET_PDEATHSIG, SIGTERM);
}

}  // namespace

bool DisplayAnswers() {
  if (!IsDisplayNamed()) return false;
  const pid_t child = fork();
  if (child == 0) RunOnDisplay<QGuiApplication>({});
  int status = 0;
  return child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status) &&
         WEXITSTATUS(status) == 0;
}

void ShowOnDisplay(const std::function<void()>& show) {
  if (!IsDisplayNamed() || IsStopSignalled()) return;
  const pid_t child = fork();
  if (child == 0) {
    EndWithParent();
    RunOnDisplay<QApplication>(show);
  }
  while (child > 0 && waitpid(child, nullptr, WNOHANG) == 0) {
    if (IsStopSignalled()) kill(child, SIGKILL);
    nanosleep(&kBetweenLooks, nullptr);
  }
}

}  // namespace ledrix
