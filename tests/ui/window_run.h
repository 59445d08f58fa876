// A main window with folders, settings and a desktop of its own.
#pragma once

#include <QTreeView>
#include <memory>
#include <string>
#include <vector>

#include "run/job_record.h"
#include "settings/settings_store.h"
#include "ui/desktop_actions.h"
#include "ui/main_window.h"
#include "ui/window_platform.h"
#include "ui/window_test.h"

namespace ledrix::test {

using Texts = std::vector<std::string>;

// Records what is asked of the desktop.
class RecordingActions : public DesktopActions {
 public:
  OpenResult OpenFile(const NativePath& path) override {
    asked.push_back("open " + path.bytes());
    return open_result;
  }
  bool OpenFolder(const NativePath& folder) override {
    asked.push_back("folder " + folder.bytes());
    return true;
  }
  bool OpenAddress(const QString& address) override {
    asked.push_back("address " + address.toStdString());
    return true;
  }
  bool MoveToTrash(const NativePath& path) override;
  bool StartLauncher(const Launcher& launcher, const NativePath& file) override;
  NativePath DocumentsFolder() override { return documents; }
  void SetClipboardText(const QString& text) override { clipboard = text.toStdString(); }

  Texts asked;
  std::string clipboard;
  OpenResult open_result = OpenResult::kOpened;
  bool trash_works = true;
  NativePath documents;
};

// The folders old/ and new/ stand ready; the window is made by Open.
struct WindowRun {
  WindowRun();
  ~WindowRun();

  // Writes a file below the folder, dated `seconds` after the tests' time.
  void File(const std::string& name, const std::string& bytes, int seconds = 0);
  void Set(const char* key, const std::string& value) { store.WriteSetting("Option", key, value); }
  // Makes and shows the window; both sides show every file of their folder.
  LedrixF0& Open();
  // Closes the window and makes it anew, from what it has saved.
  LedrixF0& Reopen();

  // Selects files of a side by their names, joined by spaces, and nothing else.
  void Select(int side, const char* names);
  Texts Selected(int side);
  Texts Names(int side);
  Texts Results();
  std::string PathText(int side);
  std::string Preview();
  QTreeView& Files(int side);
  void Click(const char* button);
  void Trigger(const char* action);
  // Opens the popup menu on a list ("inListView0", "inDirBox1", "OutList") and triggers an entry.
  void Popup(const char* list, const char* action);
  std::string Path(const std::string& name) const { return folder.path() + "/" + name; }

  TempFolder folder;
  TempFolder home;  // of the program
  OptionRecord options;
  JobRecord job;
  SettingsStore store;
  WindowPlatform platform;
  RecordingActions actions;
  std::unique_ptr<LedrixF0> window;
};

}  // namespace ledrix::test
