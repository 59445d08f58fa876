#include "ui/history_window.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QHeaderView>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>
#include <filesystem>
#include <map>

#include "support/test_run.h"
#include "ui/qt_text.h"
#include "ui/window_test.h"

namespace ledrix {
namespace {

using Texts = std::vector<std::string>;
using test::Find;

// A run log of the folders a, b and c, all used lately, and a window that notes what it opens.
struct History {
  test::TempFolder folder;
  test::TestRun run;
  RunLog log{NativePath(folder.path() + "/"), run.platform};
  SettingsStore store{folder.At("settings.ini")};
  Texts opened;  // "SIDE NAME"

  History() {
    for (const char* name : {"a", "b", "c"}) std::filesystem::create_directory(Path(name));
    WriteLog({Path("c") + ",2024/03/01 01:00:00", Path("a") + ",2024/03/03 01:00:00",
              Path("b") + ",2024/03/02 01:00:00"});
  }
  std::string Path(const std::string& name) const { return folder.path() + "/" + name + "/"; }
  void WriteLog(const Texts& lines) const { folder.Write("Ledrixr.Log", test::Lines(lines)); }
  // The names of the folders in the run log, in its order.
  std::string Logged() const {
    std::string names;
    for (const std::string& line : test::ReadLines(folder.At("Ledrixr.Log"))) {
      const size_t start = folder.path().size() + 1;
      names += line.substr(start, line.rfind("/,") - start);
    }
    return names;
  }

  LedrixFr window{log, store, Side::kNew, [this](Side side, const NativePath& path) {
                    const std::string name = path.bytes().substr(folder.path().size());
                    opened.push_back(std::to_string(IndexOf(side)) + name);
                  }};
  QTreeWidget& List() { return *Find<QTreeWidget>(window, "DirList"); }
  void Select(int row) { List().setCurrentItem(List().topLevelItem(row)); }
  std::string Selected() {
    const auto rows = List().selectedItems();
    if (rows.isEmpty()) return "";
    return ToUtf8(rows.front()->text(0)).substr(folder.path().size());
  }
  void Press(const char* button) { Find<QAbstractButton>(window, button)->click(); }
};

TEST(HistoryWindow, ShowsTheFoldersOfTheLog) {
  History history;
  history.window.show();
  QTreeWidget& list = history.List();
  ASSERT_EQ(list.topLevelItemCount(), 3);
  EXPECT_EQ(ToUtf8(list.topLevelItem(0)->text(0)), history.Path("a"));
  EXPECT_EQ(list.topLevelItem(0)->text(1), "2024/03/03 01:00:00");
  EXPECT_EQ(ToUtf8(list.topLevelItem(2)->text(0)), history.Path("c"));
  EXPECT_TRUE(test::WaitUntil([&] { return list.hasFocus(); }));
  EXPECT_EQ(history.Selected(), "");
  // Nothing is selected, so nothing is opened or removed.
  QTest::keyClick(&list, Qt::Key_Return);
  QTest::keyClick(&list, Qt::Key_Delete);
  history.Press("BtnDirOpen0");
  EXPECT_TRUE(history.window.isVisible());
  EXPECT_EQ(list.topLevelItemCount(), 3);
  EXPECT_EQ(history.opened, Texts());
}

TEST(HistoryWindow, OpensFoldersAndClosesByDoubleClickAndEnter) {
  History history;
  history.window.show();
  history.Select(1);
  history.Press("BtnDirOpen0");
  history.Press("BtnDirOpen1");
  EXPECT_TRUE(history.window.isVisible());
  QTest::keyClick(&history.List(), Qt::Key_Enter);
  EXPECT_FALSE(history.window.isVisible());
  history.window.show();
  history.Select(0);
  QTreeWidget& list = history.List();
  const QPoint place = list.visualItemRect(list.topLevelItem(2)).center();
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
  QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
  EXPECT_FALSE(history.window.isVisible());
  EXPECT_EQ(history.opened, (Texts{"0/b/", "1/b/", "1/b/", "1/c/"}));
  // The Enter key on a button is that button's.
  history.window.show();
  history.Select(0);
  auto& button = *Find<QPushButton>(history.window, "BtnDirOpen0");
  button.setFocus();
  QTest::keyClick(&button, Qt::Key_Return);
  EXPECT_EQ(history.opened.back(), "0/a/");
  EXPECT_TRUE(history.window.isVisible());
}

TEST(HistoryWindow, KeepsWhatItsCommandsCloseAndDropsWhatItsCloseBoxDoes) {
  struct Case {
    const char* how;
    std::function<void(History&)> close;
    const char* logged;
  };
  for (const Case& c : std::vector<Case>{
           {"close box", [](History& h) { h.window.close(); }, "cab"},
           {"Escape", [](History& h) { QTest::keyClick(&h.window, Qt::Key_Escape); }, "cab"},
           {"close", [](History& h) { h.Press("BtnClose"); }, "ac"},
           {"Enter", [](History& h) { QTest::keyClick(&h.List(), Qt::Key_Return); }, "ac"},
           {"clear", [](History& h) { h.Press("BtnClear"); }, ""}}) {
    History history;
    history.window.show();
    history.Select(1);
    QTest::keyClick(&history.List(), Qt::Key_Delete);
    EXPECT_EQ(history.Selected(), "/c/");
    c.close(history);
    EXPECT_FALSE(history.window.isVisible()) << c.how;
    EXPECT_EQ(history.Logged(), c.logged) << c.how;
  }
}

TEST(HistoryWindow, DeletesAndReadsAnewWhenShownAgain) {
  History history;
  history.window.show();
  history.Select(2);
  for (const char* selected : {"/b/", "/a/", ""}) {
    QTest::keyClick(&history.List(), Qt::Key_Delete);
    EXPECT_EQ(history.Selected(), selected);
  }
  history.window.close();
  history.window.show();
  EXPECT_EQ(history.List().topLevelItemCount(), 3);
}

TEST(HistoryWindow, KeepsItsSize) {
  const int design = History().window.minimumWidth();
  const std::map<std::string, int> widths = {
      {"", design},  {"-3000000", design}, {"1e3x", design}, {"nan", design},
      {"9000", 600}, {" 9007.4 ", 600},    {"1e38", 800}};  // of the test screen
  for (const auto& [stored, width] : widths) {
    History history;
    if (!stored.empty()) history.store.WriteSetting("Settings", "LViewWidth", stored);
    EXPECT_EQ(LedrixFr(history.log, history.store, Side::kOld, {}).width(), width) << stored;
  }
  for (const bool by_box : {false, true}) {
    History history;
    history.window.show();
    history.window.resize(640, 400);
    by_box ? (void)history.window.close() : history.Press("BtnClose");
    EXPECT_EQ(history.store.ReadSetting("Settings", "LViewWidth", ""), "9600");
    EXPECT_EQ(history.store.ReadSetting("Settings", "LViewHeight", ""), "6000");
    history.window.showMinimized();
    history.window.resize(700, 500);
    history.window.close();
    EXPECT_EQ(history.store.ReadSetting("Settings", "LViewWidth", ""), "9600");
  }
}

}  // namespace
}  // namespace ledrix
