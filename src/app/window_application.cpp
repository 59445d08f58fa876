#include "app/window_application.h"

#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>

#include "app/signals.h"
#include "ui/fonts.h"

namespace ledrix {
namespace {

// That of the desktop's theme where Ledrix is installed, else the one that is compiled in.
QIcon ProgramIcon() {
  QIcon own;
  for (const char* const file : {":/ledrix-48.png", ":/ledrix-128.png", ":/ledrix-256.png"})
    own.addFile(file);
  return QIcon::fromTheme("ledrix", own);
}

}  // namespace

WindowApplication::WindowApplication(int& argc, char** argv) : application_(argc, argv) {
  QApplication::setApplicationName("ledrix");
  QApplication::setDesktopFileName("ledrix");
  QApplication::setWindowIcon(ProgramIcon());
  QLocale::setDefault(QLocale(QLocale::Japanese, QLocale::Japan));
  // Qt's own texts, such as those of its file dialog.
  if (translator_.load("qtbase_ja", QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
    QApplication::installTranslator(&translator_);
  SubstituteFonts();
}

int WindowApplication::Run() {
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, &poll, [] {
    if (IsStopSignalled()) QApplication::closeAllWindows();
  });
  poll.start(kSignalPollMilliseconds);
  return QApplication::exec();
}

}  // namespace ledrix
