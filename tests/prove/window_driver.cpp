// The window program's own actions without a display, as steps in the order of the arguments:
//   settings KEY VALUE      sets an option and closes the window, which saves all settings
//   pattern N NAME          saves the options under a name as condition pattern N, from 1
//   log FOLDER              puts a folder into the history, shows that, closes and compacts it
//   copy FROM TO            copies a file
//   open FILE               opens a file by its association
//   folder FOLDER           opens a folder in the file manager
//   sendto FILE LAUNCHER    starts a launcher file with a file
//   delete FILE             moves a file to the trash
//   menu FILE OTHER ENTRY   gives a command of the popup menu, by its object name, on a file that
//                           is selected on the old side while the new side shows OTHER
// Questions get their default answer. Exits with 2 at the first step that was not done; what a
// message box would tell is on stderr then, as is every other one.
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <cstdlib>
#include <map>
#include <memory>
#include <span>
#include <stdexcept>

#include "app/program_run.h"
#include "platform/program_folder.h"
#include "ui/desktop_actions.h"
#include "ui/file_commands.h"
#include "ui/history_window.h"
#include "ui/main_window.h"
#include "ui/program_commands.h"
#include "ui/window_platform.h"

namespace ledrix {
namespace {

using Words = std::span<char*>;

void Require(bool done, const char* what) {
  if (!done) throw std::runtime_error(what);
}

// Answers by the default; a message that only tells is trouble.
class Platform : public WindowPlatform {
 public:
  MessageAnswer ShowMessage(const Message& message) override {
    ReportTrouble(message.text);
    has_told |= message.buttons == MessageButtons::kOk;
    return message.default_answer;
  }
  bool has_told = false;
};

// The desktop; notes what it refused, which no message tells.
class Actions : public DesktopActions {
 public:
  OpenResult OpenFile(const NativePath& path) override {
    const OpenResult result = DesktopActions::OpenFile(path);
    has_refused |= result == OpenResult::kFailed;
    return result;
  }
  bool StartLauncher(const Launcher& launcher, const NativePath& file) override {
    const bool started = DesktopActions::StartLauncher(launcher, file);
    has_refused |= !started;
    return started;
  }
  bool has_refused = false;
};

struct Driver {
  Driver() {
    store.Load().Ignore();
    TellUnreadSettings(store, platform);
    LoadOptions(store, options);
  }
  LedrixF0& Window() {
    if (!window) {
      window = std::make_unique<LedrixF0>(
          WindowProgram{options, job, store, platform, actions, ProgramFolder()});
      window->show();
    }
    return *window;
  }

  void Settings(Words words) {
    const OptionField* const field = FindOptionField(words[0]);
    Require(field != nullptr, "no such option");
    Window();  // loads the options
    field->Set(options, words[1]);
    Require(window->close(), "the window does not close");
    window.reset();
  }
  void Pattern(Words words) {
    const size_t n = static_cast<size_t>(std::atoi(words[0])) - 1;
    Require(n < kPatternSlots, "no such pattern");
    PatternSlots patterns(ProgramFolder());
    Require(patterns.LoadPattern(n).ok(), "the pattern cannot be read");
    Require(patterns.SavePattern(n, {words[1], options}).ok(), "the pattern cannot be saved");
  }
  void Log(Words words) {
    RunLog log(ProgramFolder(), platform);
    log.WriteRunRecord(AddBackslash(MakeAbsolute(NativePath(words[0]))));
    LedrixFr history(log, store, Side::kOld, [](Side, const NativePath&) {});
    history.show();
    history.accept();
    log.CompactHistory();
  }
  void Copy(Words words) {
    Require(files.Copy({{NativePath(words[0]), NativePath(words[1])}}), "not copied");
  }
  void Open(Words words) { files.Open(NativePath(words[0])); }
  void Folder(Words words) { Require(actions.OpenFolder(NativePath(words[0])), "not opened"); }
  void Delete(Words words) { Require(files.Delete({NativePath(words[0])}), "not deleted"); }
  void SendTo(Words words) {
    const std::optional<Launcher> launcher = ReadLauncher(NativePath(words[1]));
    Require(launcher.has_value(), "no launcher");
    actions.StartLauncher(*launcher, NativePath(words[0]));
  }
  void Menu(Words words) {
    Window().OpenOnSide(Side::kOld, NativePath(words[0]));
    Window().OpenOnSide(Side::kNew, NativePath(words[1]));
    auto* const list = window->findChild<QAbstractItemView*>("inListView0");
    const QPoint place = list->visualRect(list->currentIndex()).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, list->viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(list->viewport(), &event);
    auto* const entry = window->findChild<QAction*>(words[2]);
    Require(entry != nullptr && entry->isVisible(), "no such entry");
    entry->trigger();
  }

  OptionRecord options;
  JobRecord job;
  SettingsStore store{SettingsPath()};
  Platform platform;
  Actions actions;
  FileCommands files{platform, actions};
  std::unique_ptr<LedrixF0> window;
};

struct Step {
  size_t words;
  void (Driver::*act)(Words);
};
const std::map<std::string, Step> kSteps = {
    {"settings", {2, &Driver::Settings}}, {"pattern", {2, &Driver::Pattern}},
    {"log", {1, &Driver::Log}},           {"copy", {2, &Driver::Copy}},
    {"open", {1, &Driver::Open}},         {"folder", {1, &Driver::Folder}},
    {"sendto", {2, &Driver::SendTo}},     {"delete", {1, &Driver::Delete}},
    {"menu", {3, &Driver::Menu}}};

int Run(int argc, char** argv) {
  const QApplication application(argc, argv);
  Driver driver;
  for (Words rest = Words(argv, static_cast<size_t>(argc)).subspan(1); !rest.empty();) {
    const auto step = kSteps.find(rest[0]);
    Require(step != kSteps.end() && rest.size() > step->second.words, "no such step");
    (driver.*step->second.act)(rest.subspan(1, step->second.words));
    Require(!driver.platform.has_told && !driver.actions.has_refused, rest[0]);
    rest = rest.subspan(1 + step->second.words);
  }
  return 0;
}

}  // namespace
}  // namespace ledrix

int main(int argc, char** argv) {
  return ledrix::RunProgram("window_driver", ledrix::Run, argc, argv);
}
