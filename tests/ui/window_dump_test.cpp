// Every window as it first appears, with all its texts, against its recorded dump.
#include "ui/window_dump.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "ui/history_window.h"
#include "ui/options_dialog.h"
#include "ui/version_window.h"
#include "ui/window_run.h"

namespace ledrix {
namespace {

using test::DumpWindow;
using test::WindowRun;

void ExpectDump(const WindowRun& run, const std::string& name, const std::string& dump) {
  test::ExpectGolden("windows/" + name + ".txt", dump, run.folder);
}

TEST(Windows, HoldTheirControls) {
  WindowRun run;
  ExpectDump(run, "main_window", DumpWindow(run.Open()));
  PatternSlots patterns(run.home.At(""));
  int tab = 0;
  ExpectDump(run, "options_dialog", DumpWindow(LedrixFo(run.options, patterns, run.platform, tab)));
  RunLog log(run.home.At(""), run.platform);
  ExpectDump(run, "history_window", DumpWindow(LedrixFr(log, run.store, Side::kOld, {})));
  ExpectDump(run, "version_window", DumpWindow(LedrixFv(LedrixFv::Use::kOnDemand, run.actions)));
  ExpectDump(run, "splash", DumpWindow(LedrixFv(LedrixFv::Use::kSplash, run.actions)));
}

TEST(Windows, RunDialogAsksAndRuns) {
  WindowRun run;
  for (const char* name : {"old/a", "new/a"}) run.File(name, name);
  run.Open();
  run.Click("BtnEQSel2");
  test::ModalScript script;
  script.Then([&](QWidget& dialog) {
    ExpectDump(run, "run_dialog_asks", DumpWindow(dialog));
    dialog.close();
  });
  run.Click("BtnRun");
  run.options.StartMsg = 0;
  std::filesystem::remove(run.Path("new/a"));
  script.Then([&](QWidget& box) {  // the dialog below runs the job that tells this
    ExpectDump(run, "run_dialog_runs", DumpWindow(*run.window->findChild<QWidget*>("LedrixF1")));
    test::PressBoxButton(box, "OK");
  });
  run.Click("BtnRun");
}

TEST(Windows, PopupMenusShowWhatTheirSourceAllows) {
  std::string dump;
  for (const bool other : {false, true}) {
    WindowRun run;
    run.Set("DELMenuVisible", other ? "0" : "1");
    run.Set("OptDbClick", other ? "1" : "0");
    for (const char* name : {"old/a", "new/a"}) run.File(name, "");
    run.Open();
    if (other) run.Select(0, "a");
    for (const char* source : {"inListView0", "inListView1", "inDirBox0", "OutList"}) {
      run.Popup(source, "MenuPopListClear");
      dump +=
          source + std::string("\n") + test::DumpMenu(*test::Find<QMenu>(*run.window, "POPMenu"));
    }
  }
  test::ExpectGolden("windows/popup_menus.txt", dump, test::TempFolder());
}

}  // namespace
}  // namespace ledrix
