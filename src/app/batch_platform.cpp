#include "app/batch_platform.h"

#include <unistd.h>

#include <QTimer>
#include <QWidget>
#include <cstdlib>

#include "app/display.h"
#include "app/program_run.h"
#include "app/signals.h"
#include "ui/window_platform.h"

namespace ledrix {
namespace {

constexpr int kSignalPollMilliseconds = 100;

std::unique_ptr<QApplication> MakeApplication() {
  static char name[] = "ledrix";
  static char* arguments[] = {name, nullptr};
  static int count = 1;
  return std::make_unique<QApplication>(count, arguments);
}

// Platforms on which a box would stand where nobody sees it.
bool IsVisible() {
  const QString platform = QGuiApplication::platformName();
  return platform != "offscreen" && !platform.startsWith("minimal");
}

// While it lives, an end of the process from within Qt, which ends it with 1 when the display is
// gone, has the status of trouble.
class TroubleOnExit {
 public:
  TroubleOnExit() {
    static const int kRegistered = std::atexit([] {
      if (Lives()) _exit(kTroubleStatus);
    });
    Lives() = kRegistered == 0;
  }
  TroubleOnExit(const TroubleOnExit&) = delete;
  TroubleOnExit& operator=(const TroubleOnExit&) = delete;
  ~TroubleOnExit() { Lives() = false; }

 private:
  static bool& Lives() {
    static bool lives = false;
    return lives;
  }
};

void ShowBoxUntilSignalled(const Message& message) {
  const TroubleOnExit guard;
  QTimer signal_poll;
  QObject::connect(&signal_poll, &QTimer::timeout, &signal_poll, [] {
    QWidget* const box = QApplication::activeModalWidget();
    if (IsStopSignalled() && box != nullptr) box->close();
  });
  signal_poll.start(kSignalPollMilliseconds);
  ShowMessageBox({message.text, message.title, message.icon});
}

}  // namespace

MessageAnswer BatchPlatform::ShowMessage(const Message& message) {
  const MessageAnswer answer = ConsolePlatform::ShowMessage(message);
  if (isatty(STDERR_FILENO) == 1 || IsStopSignalled()) return answer;
  if (application_ == nullptr) {
    if (!DisplayAnswers()) return answer;
    application_ = MakeApplication();
  }
  if (IsVisible()) ShowBoxUntilSignalled(message);
  return answer;
}

}  // namespace ledrix
