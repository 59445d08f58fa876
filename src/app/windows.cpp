#include "app/windows.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLibraryInfo>
#include <QLocale>
#include <QThread>
#include <QTimer>
#include <QTranslator>
#include <memory>

#include "app/signals.h"
#include "platform/program_folder.h"
#include "text/leading_number.h"
#include "ui/desktop_actions.h"
#include "ui/fonts.h"
#include "ui/main_window.h"
#include "ui/program_commands.h"
#include "ui/version_window.h"
#include "ui/window_platform.h"

namespace ledrix {
namespace {

constexpr qint64 kSplashMilliseconds = 1500;
constexpr int kSignalPollMilliseconds = 200;

// Qt's own texts, such as those of its file dialog.
void InstallTranslation(QApplication& application, QTranslator& translator) {
  if (translator.load("qtbase_ja", QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    application.installTranslator(&translator);
  }
}

void WaitForSplash(const QElapsedTimer& shown) {
  while (shown.elapsed() <= kSplashMilliseconds) {
    QCoreApplication::processEvents();
    QThread::msleep(10);
  }
}

}  // namespace

int RunWindows(const CommandLineArgs& args, int& argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName("ledrix");
  QLocale::setDefault(QLocale(QLocale::Japanese, QLocale::Japan));
  QTranslator translator;
  InstallTranslation(application, translator);
  SubstituteFonts();

  OptionRecord options;
  JobRecord job;
  job.outputs.MergeMarks = args.merge_marks;
  job.DebugLog = args.debug_log;
  SettingsStore store(SettingsPath());
  store.Load().Ignore();
  WindowPlatform platform;
  DesktopActions actions;
  QWidget* main_window = nullptr;
  QTimer signal_poll;
  QObject::connect(&signal_poll, &QTimer::timeout, &signal_poll, [&] {
    if (!IsStopSignalled()) return;
    job.StopRequested = true;
    // From the uppermost window down, as a user would.
    QWidget* const modal = QApplication::activeModalWidget();
    QWidget* const uppermost = modal != nullptr ? modal : main_window;
    if (uppermost != nullptr) uppermost->close();
  });
  signal_poll.start(kSignalPollMilliseconds);
  TellUnreadSettings(store, platform);
  std::unique_ptr<LedrixFv> splash;
  QElapsedTimer shown;
  if (LeadingNumber(store.ReadSetting("Settings", "VerDisp", "0")) == 0) {
    splash = std::make_unique<LedrixFv>(LedrixFv::Use::kSplash, actions);
    splash->show();
    shown.start();
    QCoreApplication::processEvents();
  }
  LedrixF0 window({options, job, store, platform, actions, ProgramFolder()});
  if (args.others.size() == 2) {
    for (const Side side : kBothSides) {
      window.OpenOnSide(side, MakeAbsolute(NativePath(args.others[IndexOf(side)])));
    }
  }
  if (splash) WaitForSplash(shown);
  splash.reset();
  window.show();
  main_window = &window;
  return QApplication::exec();
}

}  // namespace ledrix
