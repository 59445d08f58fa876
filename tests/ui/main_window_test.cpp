#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMimeData>
#include <QSplitter>
#include <QTest>
#include <QToolButton>
#include <QUrl>
#include <cstdlib>
#include <filesystem>

#include "text/ascii.h"
#include "ui/window_run.h"

namespace ledrix {
namespace {

using test::Find;
using test::ModalScript;
using test::Texts;
using test::WindowRun;

TEST(FileLists, FollowFilterSortKeysAndSelection) {
  WindowRun run;
  run.File("old/b.CBL", "", 60);
  run.File("old/A.cob", "", 120);
  run.File("old/c", "", 0);
  run.File("new/C", "");
  run.File("new/a.cob", "");
  std::filesystem::create_directory(run.Path("old/sub"));
  LedrixF0& window = run.Open();
  EXPECT_EQ(run.Names(0), (Texts{"A.cob", "b.CBL", "c"}));
  EXPECT_EQ(run.Files(0).model()->index(0, 1).data().toString(), "2024/03/09 14:07");
  EXPECT_EQ(run.PathText(0), run.Path("old/"));

  auto& header = *run.Files(0).header();
  const auto click = [&](int column) {
    const QPoint place(header.sectionViewportPosition(column) + 5, header.height() / 2);
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, place);
    return run.Names(0);
  };
  run.Select(0, "c");
  EXPECT_EQ(click(1), (Texts{"c", "b.CBL", "A.cob"}));
  EXPECT_EQ(click(1), (Texts{"A.cob", "b.CBL", "c"}));
  EXPECT_EQ(click(0), (Texts{"A.cob", "b.CBL", "c"}));
  EXPECT_EQ(click(0), (Texts{"c", "b.CBL", "A.cob"}));
  EXPECT_EQ(run.Selected(0), Texts{"c"});
  EXPECT_EQ(run.PathText(0), run.Path("old/c"));

  auto& filter = *Find<QComboBox>(window, "inCombo0");
  filter.setCurrentIndex(1);
  emit filter.activated(1);
  EXPECT_EQ(filter.currentText(), "CBLｿｰｽ (*.CBL;*.COB)");
  EXPECT_EQ(run.Names(0), (Texts{"b.CBL", "A.cob"}));
  EXPECT_EQ(run.PathText(0), run.Path("old/"));

  QTest::keyClick(&run.Files(0), Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(run.Selected(0), (Texts{"b.CBL", "A.cob"}));
  run.Select(0, "A.cob");
  QTest::keyClick(&run.Files(0), Qt::Key_I, Qt::ControlModifier);
  EXPECT_EQ(run.Selected(0), Texts{"b.CBL"});
  EXPECT_EQ(run.PathText(0), run.Path("old/b.CBL"));
  run.File("old/z.CBL", "");
  QTest::keyClick(&run.Files(0), Qt::Key_R, Qt::ControlModifier);
  EXPECT_EQ(run.Names(0), (Texts{"z.CBL", "b.CBL", "A.cob"}));
  EXPECT_EQ(run.Selected(0), Texts{"b.CBL"});
  run.Select(0, "b.CBL");
  Find<QLineEdit>(window, "inTextFile0")->setText("x");
  QTest::keyClick(&run.Files(0), Qt::Key_Space);
  EXPECT_EQ(run.PathText(0), run.Path("old/b.CBL"));

  run.Select(0, "A.cob z.CBL");
  run.Click("BtnEQSel1");
  EXPECT_EQ(run.Selected(1), Texts{"a.cob"});
  run.Select(1, "C");
  run.Click("BtnEQSel0");
  EXPECT_EQ(run.Selected(0), Texts{});
  run.Click("BtnEQSel1");
  EXPECT_EQ(run.Selected(1), Texts{});
  run.Click("BtnEQSel2");
  EXPECT_EQ(run.Selected(0), Texts{"A.cob"});
  EXPECT_EQ(run.Selected(1), Texts{"a.cob"});
  run.Select(1, "");
  run.Popup("inListView0", "MenuPopMatchSelect");
  EXPECT_EQ(run.Selected(1), Texts{"a.cob"});
}

// Clicks on the row of a folder list that shows this name.
void ClickFolder(WindowRun& run, int side, const QString& name, Qt::KeyboardModifiers keys = {}) {
  auto& list = *Find<QListView>(*run.window, side == 0 ? "inDirBox0" : "inDirBox1");
  const QAbstractItemModel& model = *list.model();
  for (int row = 0; row < model.rowCount(); ++row) {
    if (model.index(row, 0).data().toString() != name) continue;
    list.scrollTo(model.index(row, 0));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, keys,
                      list.visualRect(model.index(row, 0)).center());
    QCoreApplication::processEvents();
    return;
  }
  ADD_FAILURE() << "no folder " << name.toStdString();
}

TEST(FolderLists, OpenFoldersAndFollowEachOther) {
  WindowRun run;
  for (const char* name : {"old/sub/x", "new/sub/y", "old/one/z", "new/top"}) run.File(name, "");
  run.Open();
  const auto folders = [&] { return Texts{run.PathText(0), run.PathText(1)}; };
  ClickFolder(run, 0, "sub");
  EXPECT_EQ(folders(), (Texts{run.Path("old/sub/"), run.Path("new/sub/")}));
  EXPECT_EQ(run.Names(0), Texts{"x"});
  EXPECT_EQ(run.Names(1), Texts{"y"});
  ClickFolder(run, 1, "new");
  EXPECT_EQ(folders(), (Texts{run.Path("old/"), run.Path("new/")}));
  ClickFolder(run, 0, "one");  // it has no counterpart
  EXPECT_EQ(folders(), (Texts{run.Path("old/one/"), run.Path("new/")}));
  run.Click("BtnEQ0");
  EXPECT_EQ(folders(), (Texts{run.Path("new/"), run.Path("old/one/")}));
  run.Click("BtnEQ1");
  EXPECT_EQ(folders(), (Texts{run.Path("new/"), run.Path("new/")}));
  ClickFolder(run, 0, "sub", Qt::ShiftModifier);
  EXPECT_EQ(folders(), (Texts{run.Path("new/sub/"), run.Path("new/")}));
  run.Click("BtnEQ2");
  EXPECT_EQ(folders(), (Texts{run.Path("new/"), run.Path("new/")}));

  run.options.DirBoxSClick = 0;
  run.options.DirBoxSynchro = 0;
  ClickFolder(run, 0, "sub");
  EXPECT_EQ(folders(), (Texts{run.Path("new/"), run.Path("new/")}));
  auto& list = *Find<QListView>(*run.window, "inDirBox0");
  QTest::keyClick(&list, Qt::Key_Return);
  QCoreApplication::processEvents();
  EXPECT_EQ(folders(), (Texts{run.Path("new/sub/"), run.Path("new/")}));

  std::filesystem::remove_all(run.Path("new/sub"));
  run.Trigger("MenuRefresh");
  EXPECT_EQ(folders(), (Texts{run.Path("new/"), run.Path("new/")}));
  auto& drive = *Find<QComboBox>(*run.window, "inDrive1");
  drive.setCurrentIndex(0);
  emit drive.activated(0);
  EXPECT_EQ(drive.currentText(), "/");
}

TEST(FileLists, TakeDroppedFilesAndGiveResults) {
  WindowRun run;
  run.Set("ComboIdx1", "0");
  run.File("elsewhere/%41 あ", "");
  run.File("old/a", "");
  LedrixF0& window = run.Open();
  const auto drop = [&](const char* target, const QList<QUrl>& urls) {
    auto* const view = Find<QAbstractItemView>(window, target)->viewport();
    QMimeData data;
    data.setUrls(urls);
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(view, &enter);
    QDropEvent event({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
    if (enter.isAccepted()) QCoreApplication::sendEvent(view, &event);
    return enter.isAccepted();
  };
  EXPECT_FALSE(drop("inListView1", {QUrl("https://ledrix.example/")}));
  EXPECT_TRUE(drop("inListView1",
                   {QUrl::fromLocalFile(QString::fromStdString(run.Path("elsewhere/%41 あ")))}));
  EXPECT_EQ(run.PathText(1), run.Path("elsewhere/%41 あ"));
  EXPECT_EQ(Find<QComboBox>(window, "inCombo1")->currentText(), "全て (*.*)");
  EXPECT_TRUE(drop("inDirBox0", {QUrl::fromLocalFile(QString::fromStdString(run.Path("new")))}));
  EXPECT_EQ(run.PathText(0), run.Path("new/"));

  run.options.StartMsg = 0;
  drop("inListView0", {QUrl::fromLocalFile(QString::fromStdString(run.Path("old/a")))});
  run.Popup("inListView0", "MenuPopStepCnt");
  const QAbstractItemModel& results = *Find<QListView>(window, "OutList")->model();
  ASSERT_EQ(results.rowCount(), 2);
  const std::unique_ptr<QMimeData> dragged(results.mimeData({results.index(1, 0)}));
  ASSERT_NE(dragged, nullptr);
  EXPECT_EQ(dragged->urls().at(0).toLocalFile().toStdString(), run.Path("old/a_STP.TXT"));
}

TEST(MainWindow, KeepsItsStateBetweenRuns) {
  WindowRun run;
  run.store.WriteSetting("Settings", "RisizeMode", "2");
  run.store.WriteSetting("Settings", "SplitterL", "3000");
  run.store.WriteSetting("Settings", "MainWidth", "1e99");
  run.store.WriteSetting("Settings", "MainHeight", "nonsense");
  run.store.WriteSetting("Settings", "MainLeft", "-90000000");
  run.Set("ComboIdx1", "77");
  LedrixF0& window = run.Open();
  EXPECT_EQ(window.size(), window.minimumSize());
  EXPECT_EQ(Find<QToolButton>(window, "BtnWinMode")->text(), "◇");
  EXPECT_TRUE(Find<QWidget>(window, "imgSplitter1")->isEnabled());
  EXPECT_EQ(Find<QComboBox>(window, "inCombo1")->currentIndex(), 0);
  EXPECT_EQ(Find<QWidget>(window, "inDirBox0")->width(), 200);
  window.resize(800, 700);
  run.Files(1).header()->resizeSection(0, 90);
  Find<QComboBox>(window, "inCombo1")->setCurrentIndex(2);
  run.options.OptMatch = 8;
  LedrixF0& again = run.Reopen();
  EXPECT_EQ(again.size(), QSize(800, 700));
  EXPECT_EQ(run.Files(1).header()->sectionSize(0), 90);
  EXPECT_EQ(Find<QComboBox>(again, "inCombo1")->currentIndex(), 2);
  EXPECT_EQ(run.options.OptMatch, 8);
  const auto stored = [&](const char* key) { return run.store.ReadSetting("Settings", key, "-"); };
  EXPECT_EQ(stored("MainHeight"), "10500");
  EXPECT_EQ(stored("SplitterL"), "3000");
  EXPECT_EQ(stored("RisizeMode"), "2");
  EXPECT_EQ(stored("Major") + stored("Minor"), "0100");
  EXPECT_EQ(stored("VerDisp"), "1");

  again.showMaximized();
  test::WaitUntil([&] { return again.isMaximized(); });
  run.Reopen();
  EXPECT_EQ(stored("MainHeight"), "10500");
}

TEST(MainWindow, StoresWhatItReadWhenNothingWasMoved) {
  const char* const keys[] = {"SplitterL",    "SplitterR",    "ColWidthOld1",
                              "ColWidthOld2", "ColWidthNew2", "MainWidth"};
  for (const char* mode : {"0", "1", "2"}) {
    WindowRun run;
    run.store.WriteSetting("Settings", "RisizeMode", mode);
    run.store.WriteSetting("Settings", "SplitterR", "-99");
    run.Open();
    run.Reopen();
    Texts first;
    for (const char* key : keys) first.push_back(run.store.ReadSetting("Settings", key, "-"));
    EXPECT_EQ(first[0], "2040");
    EXPECT_EQ(first[1], "2040");
    run.Reopen();
    run.Reopen();
    for (size_t i = 0; i < first.size(); ++i) {
      EXPECT_EQ(run.store.ReadSetting("Settings", keys[i], "-"), first[i]) << mode << keys[i];
    }
  }
}

TEST(MainWindow, CyclesTheSplitterModes) {
  constexpr int kHalfStrip = 172 / 15;
  WindowRun run;
  LedrixF0& window = run.Open();
  const auto& button = *Find<QToolButton>(window, "BtnWinMode");
  const struct {
    const char* symbol;
    const char* hint;
    bool draggable;
  } modes[] = {{"⊿", "フォームリサイズ時に区切バー位置リセット", true},
               {"◇", "区切バー位置は常に可変", true},
               {"▽", "区切バー位置比率固定", false}};
  for (const auto& mode : modes) {
    run.Click("BtnWinMode");
    EXPECT_EQ(button.text(), mode.symbol);
    EXPECT_EQ(button.toolTip().section('\n', 0, 0), mode.hint);
    EXPECT_EQ(Find<QWidget>(window, "imgSplitter0")->isEnabled(), mode.draggable);
  }
  const QWidget& bar = *Find<QWidget>(window, "imgSplitter1");
  const auto middle = [&] { return bar.mapTo(&window, QPoint(0, 0)).x(); };
  window.resize(1200, 700);
  EXPECT_NEAR(middle(), 600 - kHalfStrip, 2);
  run.Click("BtnWinMode");
  run.Click("BtnWinMode");
  window.resize(1300, 700);
  EXPECT_NEAR(middle(), 600 - kHalfStrip, 2);
  run.Click("BtnWinMode");
  EXPECT_NEAR(middle(), 650 - kHalfStrip, 2);
}

TEST(MainWindow, ChoosesWhereOutputsGo) {
  WindowRun run;
  run.File("old/a.b", "");
  run.File("new/c", "");
  run.Open();
  run.Select(0, "a.b");
  EXPECT_EQ(run.Preview(), " LIST=" + run.Path("old/a_b_COMP.TXT"));
  run.Click("OptListDir1");
  run.Click("OptCsvList");
  EXPECT_EQ(run.Preview(), " LIST=" + run.Path("new/ <New File Name> _COMP.TXT") + " / Csv List");
  run.Select(1, "c");
  EXPECT_EQ(run.Preview(), " LIST=" + run.Path("new/c_COMP.TXT") + " / Csv List");
  EXPECT_FALSE(Find<QWidget>(*run.window, "BtnListElse")->isEnabled());
  {
    ModalScript script;
    script.Then([](QWidget& chooser) {
      EXPECT_EQ(chooser.windowTitle(), "結果ﾘｽﾄﾌｧｲﾙ出力先の選択");
      chooser.close();
    });
    run.Click("OptListDir2");
  }
  EXPECT_TRUE(Find<QWidget>(*run.window, "BtnListElse")->isEnabled());
  EXPECT_EQ(run.Preview(), " LIST=" + run.Path("new/a_b_COMP.TXT") + " / Csv List");

  run.options.ContOutDir = 1;
  ModalScript script;
  script.Answer("いいえ").Answer("はい");
  run.Click("OptListDir0");
  EXPECT_EQ(run.job.outputs.OutputDirMode, OutputDirMode::kConstant);
  EXPECT_FALSE(Find<QAbstractButton>(*run.window, "OptListDir0")->isChecked());
  run.Click("OptListDir0");
  EXPECT_EQ(run.job.outputs.OutputDirMode, OutputDirMode::kOldDir);
  EXPECT_EQ(run.options.ContOutDir, 0);
  EXPECT_EQ(script.texts.at(0),
            "Ledrix: 出力結果ﾌｧｲﾙを出力するﾃﾞｨﾚｸﾄﾘは常に固定されています。\n"
            "出力先固定オプションを解除しますか？");
}

TEST(MainWindow, TellsOfAMissingFixedFolderAtTheStart) {
  WindowRun run;
  run.Set("ContOutDir", "1");
  run.Set("ContOutDirPath", run.Path("none"));
  {
    ModalScript script;
    script.Answer("OK");
    run.Open();
    EXPECT_EQ(script.texts, Texts{"Ledrix: 出力結果ﾌｧｲﾙを出力するﾃﾞｨﾚｸﾄﾘが見つかりません"});
  }
  EXPECT_EQ(run.options.ContOutDir, 0);
  EXPECT_TRUE(Find<QAbstractButton>(*run.window, "OptListDir0")->isChecked());
  run.options.ContOutDir = 1;
  run.options.ContOutDirPath = run.Path("old");
  run.window->close();
  run.Open();
  EXPECT_EQ(run.job.outputs.OutputDirMode, OutputDirMode::kConstant);
  EXPECT_FALSE(Find<QAbstractButton>(*run.window, "OptListDir0")->isChecked());
}

TEST(PopupCommands, ActOnTheListTheyWereOpenedOn) {
  WindowRun run;
  run.File("old/a.xyz", "old");
  run.File("old/b", "");
  run.File("new/a.xyz", "new", 60);
  run.Open();
  run.Select(0, "a.xyz");
  run.Popup("inListView0", "MenuPopAPStart");
  run.Popup("inDirBox1", "MenuPopDirExp");
  EXPECT_EQ(run.actions.asked,
            (Texts{"open " + run.Path("old/a.xyz"), "folder " + run.Path("new/")}));
  run.Popup("inDirBox0", "MenuPopDirClip");
  EXPECT_EQ(run.actions.clipboard, "a.xyz\r\nb");
  run.Popup("inListView1", "MenuPopCompClip");
  EXPECT_EQ(run.actions.clipboard,
            "OLD : " + run.Path("old") + "\r\nNEW : " + run.Path("new") +
                "\r\n\r\n追加されたファイル\r\n\r\n削除されたファイル\r\nb\r\n"
                "\r\n一致するファイル\r\na.xyz\r\n");
  run.Popup("inDirBox0", "MenuPopCurentADD");
  EXPECT_NE(test::ReadFile(run.home.At("Ledrixr.Log")).find(run.Path("old/,")), std::string::npos);

  ModalScript script;
  script.Answer("OK")
      .Then([](QWidget& box) {
        EXPECT_EQ(test::DefaultButton(box), "いいえ");
        test::PressBoxButton(box, "いいえ");
      })
      .Answer("はい")
      .Answer("いいえ")
      .Answer("はい")
      .Answer("はい")
      .Answer("OK");
  run.actions.open_result = DesktopActions::OpenResult::kNoAssociation;
  run.Popup("inListView0", "MenuPopAPStart");
  run.Popup("inListView0", "MenuPOPFileCopy");
  EXPECT_EQ(test::ReadFile(NativePath(run.Path("new/a.xyz"))), "new");
  run.Popup("inListView0", "MenuPOPFileCopy");
  EXPECT_EQ(test::ReadFile(NativePath(run.Path("new/a.xyz"))), "old");
  run.Popup("inListView0", "MenuPOPDeleteFile");
  EXPECT_EQ(run.Names(0), (Texts{"a.xyz", "b"}));
  run.Popup("inListView0", "MenuPOPDeleteFile");
  EXPECT_EQ(run.Names(0), Texts{"b"});
  run.actions.trash_works = false;
  run.Select(0, "b");
  run.Popup("inListView0", "MenuPOPDeleteFile");
  EXPECT_EQ(run.Names(0), Texts{"b"});
  EXPECT_EQ(script.texts.at(0), "Ledrix: ｱﾌﾟﾘｹｰｼｮﾝが関連付けされていません\n 拡張子( .xyz )");
  EXPECT_EQ(script.texts.at(5), "Ledrix: ごみ箱に移動できません\n" + run.Path("old/b"));
  // A file that is new on the other side needs no question.
  run.Popup("inListView0", "MenuPOPFileCopy");
  EXPECT_EQ(run.Names(1), (Texts{"a.xyz", "b"}));
}

TEST(PopupCommands, TellWhyACopyFailed) {
  WindowRun run;
  run.File("old/a", "x");
  run.Open();
  run.Select(0, "a");
  std::filesystem::remove(run.Path("new"));
  ModalScript script;
  script.Answer("OK");
  run.Popup("inListView0", "MenuPOPFileCopy");
  ASSERT_EQ(script.texts.size(), 1u);
  EXPECT_EQ(script.texts[0].rfind("Ledrix: コピーできません: ", 0), 0u) << script.texts[0];
  EXPECT_EQ(run.PathText(1), run.folder.path() + "/");  // the nearest folder that is left
}

TEST(DriveList, RefusesADriveThatCannotBeRead) {
  WindowRun run;
  const std::string home = std::getenv("HOME") == nullptr ? "" : std::getenv("HOME");
  std::filesystem::create_directory(run.Path("home"));
  setenv("HOME", run.Path("home").c_str(), 1);
  run.Open();
  setenv("HOME", home.c_str(), 1);
  std::filesystem::remove(run.Path("home"));
  auto& drive = *Find<QComboBox>(*run.window, "inDrive0");
  const int before = drive.currentIndex();
  const int gone = drive.findText(QString::fromStdString(run.Path("home/")));
  ASSERT_GE(gone, 0);
  ModalScript script;
  script.Answer("OK");
  drive.setCurrentIndex(gone);
  emit drive.activated(gone);
  EXPECT_EQ(script.texts, Texts{"Ledrix: " + run.Path("home") +
                                " にアクセスできません  デバイスの準備ができていません"});
  EXPECT_EQ(drive.currentIndex(), before);
  EXPECT_EQ(run.PathText(0), run.Path("old/"));
}

TEST(VersionWindow, OpensTheAddress) {
  WindowRun run;
  run.Open();
  ModalScript script;
  script.Then([](QWidget& window) {
    Find<QAbstractButton>(window, "BtnURL")->click();
    Find<QAbstractButton>(window, "BtnEnd")->click();
  });
  run.Trigger("MenuHelpVersion");
  EXPECT_EQ(run.actions.asked, Texts{"address https://ledrix.example/"});
}

}  // namespace
}  // namespace ledrix
