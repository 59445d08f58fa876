#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QScrollBar>
#include <QTest>
#include <QToolButton>
#include <filesystem>

#include "ui/window_run.h"

namespace ledrix {
namespace {

using test::Find;
using test::ModalScript;
using test::Texts;
using test::WindowRun;

struct KeyRun : WindowRun {
  explicit KeyRun(std::initializer_list<const char*> files) {
    int seconds = 0;
    for (const char* name : files) File(name, name, ++seconds);
    options.StartMsg = 0;
    Set("StartMsg", "0");
    Open();
  }
  void Press(QKeyCombination key) {
    EXPECT_TRUE(test::WaitUntil([this] { return window->isActiveWindow(); }));
    QTest::keyClick(window.get(), key.key(), key.keyboardModifiers());
  }
  std::string Focused() const { return window->focusWidget()->objectName().toStdString(); }
  std::string Panel(const char* name) const {
    const auto* const panel = Find<QLabel>(*window, name);
    return panel->isVisible() ? panel->text().toStdString() : std::string();
  }
};

TEST(Keys, ReachListsFoldersAndJobs) {
  KeyRun run({"old/a", "old/b", "new/a", "new/c"});
  const char* const round[] = {"inDirBox0", "inListView0", "inDirBox1", "inListView1", "OutList"};
  Find<QWidget>(*run.window, "OutList")->setFocus();
  for (const char* pane : round) {
    run.Press(Qt::Key_F6);
    EXPECT_EQ(run.Focused(), pane);
  }
  run.Press(Qt::SHIFT | Qt::Key_F6);
  run.Press(Qt::CTRL | Qt::Key_L);
  EXPECT_EQ(run.Focused(), "inTextFile1");
  run.Press(Qt::CTRL | Qt::Key_S);
  EXPECT_EQ(run.PathText(0), run.Path("new/"));
  run.Press(Qt::CTRL | Qt::Key_S);
  run.File("old/d", "");
  run.Press(Qt::Key_F5);
  EXPECT_EQ(run.Names(0), (Texts{"a", "b", "d"}));
  run.Select(1, "c a");
  run.Press(Qt::ALT | Qt::Key_Left);
  EXPECT_EQ(run.Selected(0), Texts{"a"});
  run.Press(Qt::ALT | Qt::Key_Right);
  EXPECT_EQ(run.Selected(1), Texts{"a"});
  run.Press(Qt::CTRL | Qt::Key_Return);
  EXPECT_EQ(run.Results().at(0), "( 1 Compare ) " + run.Path("old/a_COMP.TXT"));
  EXPECT_EQ(run.Names(0), (Texts{"a", "a_COMP.TXT", "b", "d"})) << "lists show what a job wrote";
  EXPECT_EQ(run.Selected(0), Texts{"a"});
  auto& results = *Find<QListView>(*run.window, "OutList");
  results.setFocus();
  results.selectAll();
  QTest::keyClick(&results, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(),
            run.Results().at(0) + "\n" + run.Results().at(1));
  run.Press(Qt::Key_Delete);
  EXPECT_EQ(run.Results(), Texts{});
}

TEST(Keys, GoThroughTheFailuresOfAMultipleCompare) {
  KeyRun run({"old/a", "old/b", "old/c", "new/a", "new/b", "new/c"});
  for (const char* name : {"old/a_COMP.TXT", "old/c_COMP.TXT"}) {
    std::filesystem::create_directory(run.Path(name));
  }
  run.Click("BtnEQSel2");
  ModalScript script;
  script.Answer("OK").Answer("OK");
  run.Click("BtnRun");
  EXPECT_EQ(run.Panel("PanelPairs"), "全 3 組: 変更あり 1 エラー 2");
  const auto row = [&] { return Find<QListView>(*run.window, "OutList")->currentIndex().row(); };
  for (const int failed : {1, 5, 1}) {
    run.Press(Qt::Key_F8);
    EXPECT_EQ(row(), failed);
  }
  run.Press(Qt::SHIFT | Qt::Key_F8);
  EXPECT_EQ(row(), 5);
}

TEST(PathBox, KeepsAMistypedPathUntilAnotherFolderOpens) {
  KeyRun run({"old/a"});
  auto& box = *Find<QLineEdit>(*run.window, "inTextFile0");
  box.setText("/none/such");
  QTest::keyClick(&box, Qt::Key_Return);
  EXPECT_EQ(box.selectedText(), "/none/such");
  EXPECT_EQ(run.Panel("PanelTrouble").find("⚠ /none/such: "), 0u) << run.Panel("PanelTrouble");
  run.Press(Qt::CTRL | Qt::Key_S);
  EXPECT_EQ(run.Panel("PanelTrouble"), "");
}

TEST(PopupCommands, TakeAllThatIsSelectedAndNothingElse) {
  KeyRun run({"old/a", "old/b", "old/c", "new/a", "old/sub/x", "old/sub/y"});
  run.Select(0, "a b");
  ModalScript script;
  script.Answer("はい").Answer("はい");
  run.Popup("inListView0", "MenuPOPFileCopy");
  EXPECT_EQ(run.Names(1), (Texts{"a", "b"}));
  EXPECT_EQ(test::ReadFile(NativePath(run.Path("new/a"))), "old/a");
  run.Popup("inListView0", "MenuPOPDeleteFile");
  EXPECT_EQ(run.Names(0), Texts{"c"});
  EXPECT_EQ(script.texts,
            (Texts{"Ledrix: " + run.Path("new/a") + "\nは既に存在します。上書きしますか？",
                   "Ledrix: " + run.Path("old/a") + "\n" + run.Path("old/b") +
                       "\nをごみ箱に移動しますか？"}));
  // The folder under the mouse, not the open one.
  run.options.DirBoxSClick = 0;
  auto& folders = *Find<QListView>(*run.window, "inDirBox0");
  folders.setCurrentIndex(folders.model()->index(folders.model()->rowCount() - 1, 0));
  run.Popup("inDirBox0", "MenuPopDirExp");
  run.Popup("inDirBox0", "MenuPopDirClip");
  EXPECT_EQ(run.actions.asked.back(), "folder " + run.Path("old/sub/"));
  EXPECT_EQ(run.actions.clipboard, "x\r\ny");
}

TEST(FolderButton, DoesNothingWhenTheMouseLeavesIt) {
  KeyRun run({});
  auto& button = *Find<QToolButton>(*run.window, "BtnDirOpen0");
  QTest::mousePress(&button, Qt::LeftButton);
  QTest::mouseMove(&button, QPoint(-50, -50));
  QTest::mouseRelease(&button, Qt::LeftButton, {}, QPoint(-50, -50));
  QCoreApplication::processEvents();
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST(MainWindow, StartsInTheCurrentFolderAndOffersItsOwnForOutputs) {
  WindowRun run;
  run.Set("EndPath", "0");
  run.Open();
  EXPECT_EQ(run.PathText(0), std::filesystem::current_path().string() + "/");
  EXPECT_EQ(run.job.outputs.ElseOutputDir.bytes(), "");
}

}  // namespace
}  // namespace ledrix
