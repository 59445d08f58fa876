#include <gtest/gtest.h>

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <filesystem>

#include "ui/window_run.h"

namespace ledrix {
namespace {

using test::Find;
using test::ModalScript;
using test::Texts;
using test::WindowRun;

void Press(QWidget& window, const char* button) {
  Find<QAbstractButton>(window, button)->click();
}

// Writes a name into a chooser for outputs and accepts it.
void Name(QWidget& window, const std::string& path, const char* title) {
  auto& chooser = dynamic_cast<QFileDialog&>(window);
  EXPECT_EQ(chooser.windowTitle(), title);
  Find<QLineEdit>(chooser, "fileNameEdit")->setText(QString::fromStdString(path));
  EXPECT_TRUE(chooser.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save)->isEnabled());
  QMetaObject::invokeMethod(&chooser, "accept");
}

std::string Told(const QWidget& dialog) {
  return dialog.windowTitle().toStdString() + "\n" +
         Find<QLabel>(dialog, "LblMSG")->text().toStdString();
}

// Expects a part of the dialog's message, and starts the job.
ModalScript::Step Confirm(std::string text) {
  return [text = std::move(text)](QWidget& dialog) {
    EXPECT_NE(Told(dialog).find(text), std::string::npos) << Told(dialog);
    Press(dialog, "BtnYES");
  };
}

TEST(TextCompare, RefusesASelectionThatDoesNotPair) {
  WindowRun run;
  for (const char* name : {"old/a", "old/o", "new/a"}) run.File(name, "");
  run.Open();
  run.Select(0, "a o");
  run.Select(1, "a");
  ModalScript script;
  script.Answer("OK");
  run.Trigger("MenuTextCompStart");
  EXPECT_EQ(
      script.texts,
      Texts{
          "Ledrix: 旧ファイルと新ファイルが一致していません\n（旧） [ o ]　　（新） [ Nothing ]"});
  EXPECT_EQ(run.Results(), Texts{});
}

TEST(RunDialog, RunsEveryKindOfJob) {
  WindowRun run;
  for (const char* name : {"old/a", "new/a", "old/b", "new/b"}) {
    run.File(name, std::string(name).substr(0, 1), name[0] == 'n' ? 60 : 0);
  }
  run.File("out/old.lst", "");
  run.Open();
  run.Select(0, "a");
  run.Select(1, "b");
  ModalScript script;
  script.Then(Confirm("a と b を判定し\na_COMP.TXT に出力"));
  run.Click("BtnRun");
  EXPECT_EQ(run.Results().at(0), "( 1 Compare ) " + run.Path("old/a_COMP.TXT"));
  run.Select(0, "b a");
  run.Select(1, "a b");
  script.Then(Confirm("（ 2 ファイル ）"));
  run.Click("OptCsvList");
  run.Click("BtnRun");
  EXPECT_EQ(run.Results().size(), 8u);
  EXPECT_EQ(run.Results().at(7), "     Total File Count=    2");

  run.Trigger("MenuListClear");
  EXPECT_EQ(run.Results(), Texts{});
  run.Select(0, "a");
  script.Then(Confirm("( " + run.Path("old/a") + " )"));
  run.Popup("inListView0", "MenuPopStepCnt");
  EXPECT_EQ(run.Results().at(0), "( 1 StepCnt ) " + run.Path("old/a_STP.TXT"));

  const auto choose = [&](const char* name, const char* title) {
    script.Then([&run, name, title](QWidget& window) { Name(window, run.Path(name), title); });
  };
  choose("out/steps", "出力CSVﾌｧｲﾙの指定");
  script.Then(Confirm("(" + run.Path("new/") + ")\n2 File"));
  run.Popup("inDirBox1", "MenuPopStepCnt");
  EXPECT_EQ(run.Results().at(3), "    FILE COUNT :  2");

  choose("out/tree.txt", "ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱﾌｧｲﾙの指定");
  script.Answer("OK");
  choose("out/tree.DDF", "ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱﾌｧｲﾙの指定");
  script.Then(Confirm(run.Path("old/") + " の情報を\n" + run.Path("out/tree.DDF")));
  run.Trigger("MenuDirDatEdit");
  EXPECT_EQ(script.texts,
            Texts{"Ledrix: ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱﾌｧｲﾙの拡張子が違います\n拡張子は *.ddf のみ有功です"});
  EXPECT_EQ(run.Results().at(4), "( 3 DirEdit ) " + run.Path("out/tree.DDF"));

  for (const auto& [command, range] : {std::pair("MenuDirCompFullPath", "=フルパス"),
                                       std::pair("MenuDirCompCurentPath", "=カレントパス"),
                                       std::pair("MenuDirCompNoPath", "=パスなし")}) {
    choose("out/new.lst", "ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱ結果ﾌｧｲﾙの指定");
    if (test::FileExists(NativePath(run.Path("out/new.lst")))) {
      script.Then([](QWidget& box) { test::PressBoxButton(box, "Yes"); });
    }
    script.Then(Confirm(range));
    run.Select(0, "");
    run.Select(1, "");
    run.Trigger(command);
  }
  EXPECT_EQ(run.Results().at(10), "( 6 DirComp ) " + run.Path("out/new.lst"));
}

TEST(RunDialog, OffersTheOtherCodeOfAnOpenPair) {
  WindowRun run;
  run.File("old/a", "\xB9\xB2\xD8\xC2\n");
  run.File("new/a", "\xB9\xB2\xD8\xC2\n\n", 60);
  run.Set("CharsetCode", "FULLAUTO(全体判定)");
  run.Set("StartMsg", "0");
  run.Open();
  run.Click("BtnEQSel2");
  ModalScript script;
  script.Answer("はい");
  run.Click("BtnRun");
  EXPECT_EQ(script.texts, Texts{"Ledrix: どちらとも判定できません（Shift_JIS か EUC-JP）\n"
                                "Shift_JIS として比較しました。EUC-JP として比較し直しますか？"});
  EXPECT_EQ(run.Results().size(), 4u);
  EXPECT_NE(test::ReadFile(NativePath(run.Path("old/a_COMP.TXT"))).find("a_EUC-JP"),
            std::string::npos);
  EXPECT_EQ(run.options.CharsetCode, "FULLAUTO(全体判定)");
}

TEST(RunDialog, DoesNotOpenForWhatCannotRun) {
  WindowRun run;
  for (const char* name : {"old/a", "new/a", "old/b", "new/b", "new/empty/x"}) run.File(name, "");
  std::filesystem::remove(run.Path("new/empty/x"));
  run.Open();
  ModalScript script;
  script.Answer("OK").Answer("OK").Answer("OK");
  run.Select(1, "a b");
  run.Click("BtnDirRun");
  run.Select(0, "a b");
  run.Click("BtnDirRun");
  auto& folders = *Find<QListView>(*run.window, "inDirBox1");
  folders.setCurrentIndex(folders.model()->index(folders.model()->rowCount() - 1, 0));
  run.Popup("inDirBox1", "MenuPopStepCnt");
  EXPECT_EQ(script.texts, (Texts{"Ledrix: 新ファイルが複数選択されています",
                                 "Ledrix: 旧ファイルが複数選択されています",
                                 "Ledrix: ファイルボックスに対象ファイルが有りません"}));
}

TEST(RunDialog, DoesNothingWhenItIsNotConfirmed) {
  WindowRun run;
  run.File("old/a", "x");
  run.File("new/a", "y", 1);
  run.Open();
  run.Select(0, "a");
  run.Select(1, "a");
  ModalScript script;
  script.Then([](QWidget& dialog) { Press(dialog, "BtnNO"); }).Then([](QWidget& dialog) {
    dialog.close();
  });
  run.Click("BtnRun");
  run.Click("BtnRun");
  EXPECT_EQ(run.Results(), Texts{});
  EXPECT_FALSE(test::FileExists(NativePath(run.Path("old/a_COMP.TXT"))));
}

TEST(RunDialog, ShowsFinishedPairsBehindAMessage) {
  WindowRun run;
  run.Set("StartMsg", "0");
  for (const char* name : {"old/a", "new/a", "old/b", "new/b"}) run.File(name, name);
  run.Open();
  run.Click("BtnEQSel2");
  std::filesystem::remove(run.Path("new/b"));
  ModalScript script;
  script.Then([&](QWidget& box) {
    EXPECT_EQ(box.windowTitle(), "NEW Open Error");
    EXPECT_EQ(run.Results().size(), 2u);
    test::PressBoxButton(box, "OK");
  });
  run.Click("BtnRun");
  EXPECT_EQ(run.Results().at(3), "    エラー");
}

TEST(Chooser, TakesNoNameInAFolderThatDoesNotExist) {
  WindowRun run;
  run.File("old/a", "");
  run.Open();
  ModalScript script;
  script.Then([&](QWidget& window) { Name(window, run.Path("none/x.csv"), "出力CSVﾌｧｲﾙの指定"); })
      .Answer("OK")
      .Then([](QWidget& window) { window.close(); });
  run.Popup("inDirBox0", "MenuPopStepCnt");
  EXPECT_EQ(script.texts, Texts{"Ledrix: フォルダが見つかりません\n" + run.Path("none/")});
  EXPECT_EQ(run.Results(), Texts{});
}

// Two files whose compare takes long enough to be stopped.
struct LongRun : WindowRun {
  LongRun() {
    std::string lines;
    for (int64_t i = 0; i < 400000; ++i) lines += std::to_string(i * 7919 % 1000003) + "\r\n";
    File("old/a", lines);
    File("new/a", lines, 1);
    Set("StartMsg", "0");
    Set("OptOutLineCnt", "1");
    Open();
    Select(0, "a");
    Select(1, "a");
  }
};

TEST(RunDialog, AsksBeforeItStops) {
  LongRun run;
  QWidget* asking = nullptr;
  ModalScript script;
  script
      .Then([&](QWidget& dialog) {
        asking = &dialog;
        Press(dialog, "BtnStop");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_FALSE(run.window->close());
        dialog.close();
        EXPECT_FALSE(dialog.isVisible());
        EXPECT_FALSE(run.window->close());  // the job is still below this call
      })
      .Then([&](QWidget& box) {
        EXPECT_EQ(dynamic_cast<QMessageBox&>(box).text(), "処理を中断します  よろしいですか？");
        EXPECT_EQ(test::DefaultButton(box), "いいえ");
        // A second question cannot open above the first.
        Press(*asking, "BtnStop");
        asking->close();
        test::PressBoxButton(box, "いいえ");
      })
      .Then([](QWidget& box) {
        EXPECT_EQ(test::DefaultButton(box), "はい");
        test::PressBoxButton(box, "はい");
      });
  run.Click("BtnRun");
  EXPECT_EQ(run.Results().at(1), "    中断");
  EXPECT_TRUE(run.window->close());
}

}  // namespace
}  // namespace ledrix
