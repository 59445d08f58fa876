#include "ui/window_run.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <cstdio>
#include <filesystem>

#include "platform/files.h"
#include "text/ascii.h"

namespace ledrix::test {
namespace {

Texts Split(const std::string& names) {
  Texts pieces = SplitAt(names, ' ');
  std::erase(pieces, "");
  return pieces;
}

}  // namespace

bool RecordingActions::MoveToTrash(const NativePath& path) {
  asked.push_back("trash " + path.bytes());
  return trash_works && std::remove(path.c_str()) == 0;
}

bool RecordingActions::StartLauncher(const Launcher& launcher, const NativePath& file) {
  std::string words = "send";
  for (const std::string& word : LauncherArguments(launcher, file)) words += " " + word;
  asked.push_back(words);
  return true;
}

WindowRun::WindowRun() : store(home.At("settings.ini")) {
  for (const char* side : {"old", "new"}) std::filesystem::create_directory(Path(side));
  Set("EndPathOld", Path("old/"));
  Set("EndPathNew", Path("new/"));
  Set("ComboIdx0", "4");
  Set("ComboIdx1", "4");
  store.WriteSetting("Settings", "VerDisp", "1");
}

WindowRun::~WindowRun() = default;

void WindowRun::File(const std::string& name, const std::string& bytes, int seconds) {
  std::filesystem::create_directories(std::filesystem::path(Path(name)).parent_path());
  SetModified(folder.Write(name, bytes), kTestTime + seconds);
}

LedrixF0& WindowRun::Open() {
  window = std::make_unique<LedrixF0>(
      WindowProgram{options, job, store, platform, actions, NativePath(home.path() + "/")});
  window->show();
  window->activateWindow();
  EXPECT_TRUE(WaitUntil([this] { return window->isActiveWindow(); }));
  return *window;
}

LedrixF0& WindowRun::Reopen() {
  window->close();
  window.reset();
  options = OptionRecord();
  return Open();
}

QTreeView& WindowRun::Files(int side) {
  return *Find<QTreeView>(*window, side == 0 ? "inListView0" : "inListView1");
}

Texts WindowRun::Names(int side) {
  const QAbstractItemModel& model = *Files(side).model();
  Texts names;
  for (int row = 0; row < model.rowCount(); ++row) {
    names.push_back(model.index(row, 0).data().toString().toStdString());
  }
  return names;
}

Texts WindowRun::Selected(int side) {
  Texts selected;
  const Texts names = Names(side);
  for (size_t row = 0; row < names.size(); ++row) {
    if (Files(side).selectionModel()->isRowSelected(static_cast<int>(row), {})) {
      selected.push_back(names[row]);
    }
  }
  return selected;
}

void WindowRun::Select(int side, const char* names) {
  const Texts all = Names(side);
  QItemSelectionModel& model = *Files(side).selectionModel();
  model.clearSelection();
  for (const std::string& name : Split(names)) {
    const auto found = std::find(all.begin(), all.end(), name);
    if (found == all.end()) {
      ADD_FAILURE() << "not listed: " << name;
      continue;
    }
    const int row = static_cast<int>(found - all.begin());
    model.setCurrentIndex(Files(side).model()->index(row, 0),
                          QItemSelectionModel::Select | QItemSelectionModel::Rows);
  }
}

Texts WindowRun::Results() {
  const QAbstractItemModel& model = *Find<QListView>(*window, "OutList")->model();
  Texts lines;
  for (int row = 0; row < model.rowCount(); ++row) {
    lines.push_back(model.index(row, 0).data().toString().toStdString());
  }
  return lines;
}

std::string WindowRun::PathText(int side) {
  return Find<QLineEdit>(*window, side == 0 ? "inTextFile0" : "inTextFile1")->text().toStdString();
}

std::string WindowRun::Preview() {
  return Find<QLabel>(*window, "PanelPreview")->text().toStdString();
}

void WindowRun::Click(const char* button) {
  Find<QAbstractButton>(*window, button)->click();
}

void WindowRun::Trigger(const char* action) {
  Find<QAction>(*window, action)->trigger();
}

void WindowRun::Popup(const char* list, const char* action) {
  auto* const view = Find<QAbstractItemView>(*window, list);
  const QPoint place = view->currentIndex().isValid()
                           ? view->visualRect(view->currentIndex()).center()
                           : QPoint(5, 5);
  QContextMenuEvent event(QContextMenuEvent::Mouse, place, view->viewport()->mapToGlobal(place));
  QCoreApplication::sendEvent(view->viewport(), &event);
  auto* const menu = Find<QMenu>(*window, "POPMenu");
  EXPECT_TRUE(menu->isVisible()) << list;
  menu->hide();
  Trigger(action);
}

}  // namespace ledrix::test
