// The application object of a run with windows.
#pragma once

#include <QApplication>
#include <QTimer>
#include <QTranslator>

namespace ledrix {

// How often a run with windows looks for a signal that asks to stop.
inline constexpr int kSignalPollMilliseconds = 200;

// Speaks Japanese, also in Qt's own dialogs, and has fonts for it.
class WindowApplication {
 public:
  WindowApplication(int& argc, char** argv);

  // Returns the exit status once all windows are closed. A signal that asks to stop closes them.
  int Run();

 private:
  QApplication application_;
  QTranslator translator_;
};

}  // namespace ledrix
