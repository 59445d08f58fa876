// Times how long the main window takes to open a folder and to select all of its files.
// Usage: folder_window FOLDER    (QT_QPA_PLATFORM=offscreen needs no display)
#include <QApplication>
#include <QElapsedTimer>
#include <QTreeView>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

#include "platform/native_path.h"
#include "settings/settings_store.h"
#include "ui/desktop_actions.h"
#include "ui/main_window.h"
#include "ui/window_platform.h"

namespace {

constexpr int kRuns = 5;

// The median of the runs in milliseconds, each up to the repainted window.
double Time(const std::function<void()>& work) {
  std::vector<double> runs;
  for (int i = 0; i < kRuns; ++i) {
    QElapsedTimer timer;
    timer.start();
    work();
    QCoreApplication::processEvents();
    runs.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
  }
  std::sort(runs.begin(), runs.end());
  return runs[kRuns / 2];
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  if (argc != 2) {
    std::fputs("usage: folder_window FOLDER\n", stderr);
    return 2;
  }
  const ledrix::NativePath folder = ledrix::MakeAbsolute(ledrix::NativePath(argv[1]));
  ledrix::OptionRecord options;
  ledrix::JobRecord job;
  ledrix::SettingsStore store{ledrix::NativePath()};
  store.WriteSetting("Option", "ComboIdx0", "4");  // every file
  ledrix::WindowPlatform platform;
  ledrix::DesktopActions actions;
  ledrix::LedrixF0 window({options, job, store, platform, actions, folder});
  window.show();
  auto& files = *window.findChild<QTreeView*>("inListView0");
  std::printf("open %.0f ms", Time([&] { window.OpenOnSide(ledrix::Side::kOld, folder); }));
  std::printf(", select all of %d files %.0f ms\n", files.model()->rowCount(), Time([&] {
                files.clearSelection();
                files.selectAll();
              }));
  return 0;
}
