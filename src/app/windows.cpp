#include "app/windows.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QThread>
#include <QTimer>
#include <memory>

#include "app/batch_platform.h"
#include "app/program_run.h"
#include "app/signals.h"
#include "app/window_application.h"
#include "platform/files.h"
#include "platform/program_folder.h"
#include "text/leading_number.h"
#include "ui/desktop_actions.h"
#include "ui/main_window.h"
#include "ui/program_commands.h"
#include "ui/version_window.h"
#include "ui/window_platform.h"

namespace ledrix {
namespace {

constexpr qint64 kSplashMilliseconds = 1500;

void WaitForSplash(const QElapsedTimer& shown) {
  while (shown.elapsed() <= kSplashMilliseconds && !IsStopSignalled()) {
    QCoreApplication::processEvents();
    QThread::msleep(10);
  }
}

// Closes the windows of a run that a signal asks to stop, from the uppermost down, as a user would.
class StopBySignal {
 public:
  explicit StopBySignal(JobRecord& job) {
    QObject::connect(&poll_, &QTimer::timeout, &poll_, [this, &job] {
      if (!IsStopSignalled()) return;
      job.StopRequested = true;
      QWidget* const modal = QApplication::activeModalWidget();
      QWidget* const uppermost = modal != nullptr ? modal : main_window_;
      if (uppermost != nullptr) uppermost->close();
      // Readers stay when the main window goes, but not now.
      if (main_window_ != nullptr && !main_window_->isVisible()) QApplication::closeAllWindows();
    });
    poll_.start(kSignalPollMilliseconds);
  }
  // Until then only messages are closed.
  void MayClose(QWidget& main_window) { main_window_ = &main_window; }

 private:
  QTimer poll_;
  QWidget* main_window_ = nullptr;
};

// One a side, the old one first. What is not there is told; the nearest folder is opened then.
void OpenNamed(const std::vector<std::string>& names, LedrixF0& window, WindowPlatform& platform) {
  for (size_t i = 0; i < names.size(); ++i) {
    const NativePath path = MakeAbsolute(NativePath(names[i]));
    window.OpenOnSide(kBothSides[i], path);
    if (const Result<FileInfo> info = GetFileInfo(path); !info.ok()) {
      platform.ReportTrouble(PathToUtf8(path) + ": " + DescribeError(info.error()));
    }
  }
}

// Shows the main window and returns when it was closed; returns at once, without having shown it or
// having saved anything, when a signal came before.
int RunMainWindow(const WindowProgram& program, const std::vector<std::string>& names) {
  StopBySignal stop(program.job);
  TellUnreadSettings(program.store, program.platform);
  if (IsStopSignalled()) return 0;
  std::unique_ptr<LedrixFv> splash;
  QElapsedTimer shown;
  if (LeadingNumber(program.store.ReadSetting("Settings", "VerDisp", "0")) == 0) {
    splash = std::make_unique<LedrixFv>(LedrixFv::Use::kSplash, program.actions);
    splash->show();
    shown.start();
    QCoreApplication::processEvents();
  }
  LedrixF0 window(program);
  if (IsStopSignalled()) return 0;
  OpenNamed(names, window, program.platform);
  if (splash) WaitForSplash(shown);
  splash.reset();
  if (IsStopSignalled()) return 0;
  window.show();
  stop.MayClose(window);
  return QApplication::exec();
}

}  // namespace

int RunWindows(const CommandLineArgs& args, int& argc, char** argv) {
  const WindowApplication application(argc, argv);
  // Without the arguments that were Qt's.
  const std::vector<std::string> names =
      ParseCommandLine(std::vector<std::string>(argv + 1, argv + argc)).others;
  if (names.size() > std::size(kBothSides)) {
    PrintTrouble(kDesktopProgram,
                 "引数が多すぎます。ledrix 旧 新 または ledrix /old 旧ファイル /new 新ファイル "
                 "としてください");
    return kTroubleStatus;
  }

  OptionRecord options;
  JobRecord job;
  job.outputs.MergeMarks = args.merge_marks;
  job.DebugLog = args.debug_log;
  SettingsStore store(SettingsPath());
  store.Load().Ignore();
  WindowPlatform platform;
  DesktopActions actions;
  return RunMainWindow({options, job, store, platform, actions, ProgramFolder()}, names);
}

}  // namespace ledrix
