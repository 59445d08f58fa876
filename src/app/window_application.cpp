#include "app/window_application.h"

#include <QLibraryInfo>
#include <QLocale>

#include "app/signals.h"
#include "ui/fonts.h"

namespace ledrix {

WindowApplication::WindowApplication(int& argc, char** argv) : application_(argc, argv) {
  QApplication::setApplicationName("ledrix");
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
