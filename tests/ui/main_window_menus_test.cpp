#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <cstdlib>
#include <filesystem>

#include "ui/window_run.h"

namespace ledrix {
namespace {

using test::Find;
using test::ModalScript;
using test::Texts;
using test::WindowRun;

TEST(FolderButton, OpensTheHistoryOnAClick) {
  WindowRun run;
  std::filesystem::create_directory(run.Path("old/used"));
  run.home.Write("Ledrixr.Log", run.Path("old/used/") + ",2999/01/01 00:00:00\r\n");
  run.Open();
  ModalScript script;
  script.Then([](QWidget& history) {
    EXPECT_EQ(history.windowTitle(), "ｶﾚﾝﾄﾃﾞｨﾚｸﾄﾘの変更");
    auto& list = *Find<QAbstractItemView>(history, "DirList");
    ASSERT_EQ(list.model()->rowCount(), 1);
    list.setCurrentIndex(list.model()->index(0, 0));
    Find<QAbstractButton>(history, "BtnDirOpen0")->click();
    history.close();
  });
  run.Click("BtnDirOpen1");
  QCoreApplication::processEvents();
  EXPECT_EQ(run.PathText(0), run.Path("old/used/"));
  EXPECT_EQ(run.PathText(1), run.Path("new/"));
}

TEST(FolderButton, OpensAMenuWhenItIsHeld) {
  WindowRun run;
  run.actions.documents = NativePath(run.Path("old/"));
  LedrixF0& window = run.Open();
  auto& timer = *Find<QTimer>(window, "Timer1");
  EXPECT_EQ(timer.interval(), 900);
  timer.setInterval(10);
  auto& button = *Find<QToolButton>(window, "BtnDirOpen1");
  const QMenu& menu = *Find<QMenu>(window, "POP_ChangeDir");
  QTest::mousePress(&button, Qt::LeftButton);
  ASSERT_TRUE(test::WaitUntil([&] { return menu.isVisible(); }));
  QTest::mouseRelease(&button, Qt::LeftButton);
  QCoreApplication::processEvents();  // no history opens
  EXPECT_EQ(Find<QAction>(window, "MenuPopCDir0")->text(), "My Documents");
  EXPECT_EQ(Find<QAction>(window, "MenuPopCDir1")->text(), "Ledrix Dir");
  run.Trigger("MenuPopCDir0");
  EXPECT_EQ(run.PathText(1), run.Path("old/"));
  run.Trigger("MenuPopCDir1");
  EXPECT_EQ(run.PathText(1), run.home.path() + "/");
  EXPECT_EQ(run.PathText(0), run.Path("old/"));
}

TEST(SendTo, StartsTheChosenLauncherWithTheFile) {
  WindowRun run;
  run.Set("DELMenuVisible", "0");
  run.File("old/a", "");
  const test::TempFolder data;
  setenv("XDG_DATA_HOME", data.path().c_str(), 1);
  std::filesystem::create_directories(data.path() + "/ledrix/SendTo");
  data.Write("ledrix/SendTo/b & c.desktop",
             "[Desktop Entry]\nType=Application\nName=x\nExec=cat --new %f\n");
  run.Open();
  run.Select(0, "a");
  run.Popup("inListView0", "MenuPopRefresh");
  const QMenu& menu = *Find<QMenu>(*run.window, "MenuPopSendTo");
  ASSERT_EQ(menu.actions().size(), 1);
  EXPECT_EQ(menu.actions().at(0)->text(), "b && c");
  EXPECT_TRUE(menu.menuAction()->isVisible());
  run.Trigger("MenuPopSendAP0");
  EXPECT_EQ(run.actions.asked, Texts{"send cat --new " + run.Path("old/a")});
  std::filesystem::remove_all(data.path() + "/ledrix/SendTo");
  run.Popup("inListView0", "MenuPopRefresh");
  EXPECT_FALSE(menu.menuAction()->isVisible());
  unsetenv("XDG_DATA_HOME");
}

TEST(OptionMenu, AppliesAPatternToTheOtherMenus) {
  WindowRun run;
  run.Set("OptMatch", "7");
  run.Set("CharsetCode", "UTF-8");
  run.home.Write("LedrixPtn2.ini", "[Pattern]\r\nName=abc\r\n[Option]\r\nOptMatch=8\r\n");
  LedrixF0& window = run.Open();
  EXPECT_TRUE(Find<QAction>(window, "MenuMatchLine4")->isChecked());
  EXPECT_EQ(run.options.CharsetCode, "UTF-8");
  run.Trigger("MenuPattern1");
  EXPECT_TRUE(Find<QAction>(window, "MenuMatchLine2")->isChecked());
}

TEST(OptionMenu, OpensTheOptionsAndFollowsThem) {
  WindowRun run;
  run.Set("ContOutDirPath", run.Path("old"));
  LedrixF0& window = run.Open();
  run.Click("OptListDir1");
  const auto edit = [&](const std::function<void()>& change) {
    ModalScript script;
    script.Then([&](QWidget& dialog) {
      change();  // as its controls would
      dialog.close();
    });
    run.Trigger("MenuOption");
  };
  edit([&] {
    run.options.ContOutDir = 1;
    run.options.OptMatch = 10;
    run.options.FontSize = 4;
    run.options.FPatternTtl[2] = "txt";
    run.options.FPattern[2] = "*.txt";
  });
  EXPECT_EQ(run.job.outputs.OutputDirMode, OutputDirMode::kConstant);
  EXPECT_FALSE(Find<QAbstractButton>(window, "OptListDir1")->isChecked());
  EXPECT_TRUE(Find<QAction>(window, "MenuMatchLine3")->isChecked());
  EXPECT_EQ(Find<QWidget>(window, "OutList")->font().pointSize(), 4);
  EXPECT_EQ(run.Files(0).font().pointSize(), 4);
  const auto& filters = *Find<QComboBox>(window, "inCombo0");
  EXPECT_EQ(filters.itemText(3), "txt (*.txt)");
  EXPECT_EQ(filters.currentText(), "全て (*.*)");
  edit([&] { run.options.ContOutDir = 0; });
  EXPECT_EQ(run.job.outputs.OutputDirMode, OutputDirMode::kOldDir);
  EXPECT_TRUE(Find<QAbstractButton>(window, "OptListDir0")->isChecked());
}

TEST(ClearSettings, EndsTheWindowWithoutSaving) {
  WindowRun run;
  LedrixF0& window = run.Open();
  ModalScript script;
  script.Answer("いいえ").Answer("はい").Answer("OK");
  run.Trigger("MenuRegClear");
  EXPECT_TRUE(window.isVisible());
  run.Trigger("MenuRegClear");
  EXPECT_FALSE(window.isVisible());
  EXPECT_EQ(run.store.ReadSetting("Option", "EndPathOld", "none"), "none");
  EXPECT_EQ(run.store.ReadSetting("Settings", "MainWidth", "none"), "none");
}

}  // namespace
}  // namespace ledrix
