// The buttons of the options dialog that open windows, and what it does with files and folders.
#include <gtest/gtest.h>

#include <QApplication>
#include <QFileDialog>
#include <QFontComboBox>
#include <QInputDialog>
#include <QKeyEvent>
#include <QSpinBox>

#include "ui/options_dialog_fixture.h"
#include "ui/window_platform.h"

namespace ledrix {
namespace {

using test::Find;
using Texts = std::vector<std::string>;

class OptionsDialogActions : public test::OptionsDialogTest {};

TEST_F(OptionsDialogActions, ReplacesAMissingOutputFolder) {
  const std::string own = folder_.path();
  const Texts message{"Ledrix: 出力結果ﾌｧｲﾙを出力するﾃﾞｨﾚｸﾄﾘが見つかりません" + own +
                      " を仮定します"};
  options_.ContOutDirPath = "/no\xFFsuch\n";
  Open();
  EXPECT_FALSE(IsEnabled("BtnContOutDirPath"));
  EXPECT_EQ(Refusal(), "");  // what is not wanted may be missing, and stays as it was stored
  EXPECT_EQ(options_.ContOutDirPath, "/no\xFFsuch\n");
  options_.ContOutDir = 1;
  Open();
  EXPECT_EQ(platform_.messages, message);
  EXPECT_EQ(Shown("OptContOutDirPath"), own);
  EXPECT_TRUE(IsEnabled("BtnContOutDirPath"));

  for (const QString& missing :
       {QString(), QString(" "), QString("/no/such"), QString(10000, '9')}) {
    platform_.messages.clear();
    Press("OptContOutDir");  // off: any text may stand there
    EXPECT_FALSE(IsEnabled("BtnContOutDirPath"));
    Set("OptContOutDirPath", missing);
    EXPECT_TRUE(platform_.messages.empty());
    Press("OptContOutDir");
    EXPECT_EQ(platform_.messages, message);
    EXPECT_EQ(Shown("OptContOutDirPath"), own);
    Set("OptContOutDirPath", missing);
    EXPECT_EQ(Refusal(), message[0]);
    EXPECT_TRUE(dialog_->isVisible());
  }
  Set("OptContOutDirPath", ".");  // accepted as an absolute path
  EXPECT_EQ(Refusal(), "");
  EXPECT_EQ(options_.ContOutDirPath, MakeAbsolute(NativePath(".")).bytes());
}

TEST_F(OptionsDialogActions, DefaultButtonsFillTheirFields) {
  for (const char* const name :
       {"TextNoPattern", "TextPatternTtl0", "TextPatternTtl1", "TextPatternTtl2", "TextPattern0",
        "TextPattern1", "TextPattern2"}) {
    Set(name, "x");
  }
  Press("BtnDefltNo");
  Press("BtnDeflt");
  EXPECT_EQ(Refusal(), "");
  EXPECT_EQ(options_.NoPattern,
            "*.exe;*.bin;*.lib;*.frx;*.res;*.ocx;*.oca;*.bmp;*.jpg;*.gif;*_COMP.txt");
  EXPECT_EQ(options_.FPatternTtl, (std::array<std::string, 3>{"CBLｿｰｽ", "VBｿｰｽ", ""}));
  EXPECT_EQ(options_.FPattern,
            (std::array<std::string, 3>{"*.CBL;*.COB", "*.Frm;*.Bas;*.Cls;*.ctl;*.pag", ""}));
}

TEST_F(OptionsDialogActions, ChoosesAFontAndAFolder) {
  options_.FontName = "書体なし";
  options_.FontSize = 10;
  Open();
  EXPECT_EQ(Shown("OptFontNameSize"), "書体なし : 10 ﾎﾟｲﾝﾄ");
  test::ModalScript script;
  script.Then([](QWidget& window) { window.close(); })
      .Then([&](QWidget& window) { Find<QPushButton>(window, "BtnFontOk")->click(); })
      .Then([&](QWidget& window) {
        Find<QFontComboBox>(window, "FontFamilies")->setCurrentFont(QFont("IPAGothic"));
        Find<QSpinBox>(window, "FontPoints")->setValue(12);
        Find<QPushButton>(window, "BtnFontOk")->click();
      });
  // What stands in for a font that is not there is no choice.
  for (const char* const shown :
       {"書体なし : 10 ﾎﾟｲﾝﾄ", "書体なし : 10 ﾎﾟｲﾝﾄ", "IPAGothic : 12 ﾎﾟｲﾝﾄ"}) {
    Press("BtnFontNameSize");
    EXPECT_EQ(Shown("OptFontNameSize"), shown);
  }
  Find<QCheckBox>(*dialog_, "OptContOutDir")->setChecked(true);
  Set("OptContOutDirPath", "/tmp");
  Press("OptContOutDir");
  Press("OptContOutDir");
  const std::string chosen = folder_.path();
  script
      .Then([&](QWidget& window) {
        EXPECT_EQ(window.windowTitle(), "結果ﾘｽﾄﾌｧｲﾙ出力先の選択");
        EXPECT_EQ(dynamic_cast<QFileDialog&>(window).directory().path(), "/tmp");
        window.close();
      })
      .Then([&](QWidget& window) {
        Find<QLineEdit>(window, "fileNameEdit")->setText(ToQString(chosen));
        QMetaObject::invokeMethod(&window, "accept");
      });
  for (const std::string& folder : {std::string("/tmp"), chosen}) {
    Press("BtnContOutDirPath");
    EXPECT_EQ(Shown("OptContOutDirPath"), folder);
  }
  EXPECT_EQ(Refusal(), "");
  EXPECT_EQ(options_.FontName + std::to_string(options_.FontSize), "IPAGothic12");
  EXPECT_EQ(options_.ContOutDirPath, chosen);
  Open();
  Press("DefFontNameSize");
  EXPECT_EQ(Shown("OptFontNameSize"), "ＭＳ Ｐゴシック : 9 ﾎﾟｲﾝﾄ");
}

// Answers the question for a pattern's name; nullptr cancels.
void NamePattern(test::ModalScript& script, const char* proposed, const char* name) {
  script.Then([=](QWidget& window) {
    auto& box = dynamic_cast<QInputDialog&>(window);
    EXPECT_EQ(box.windowTitle(), "パターン名称の設定");
    EXPECT_EQ(box.labelText(), "保存するパターン名称を入力してください");
    EXPECT_EQ(box.textValue(), proposed);
    if (name == nullptr) return box.reject();
    box.setTextValue(name);
    box.accept();
  });
}

TEST_F(OptionsDialogActions, PatternsActAtOnceAndSurviveClose) {
  auto* const number = Find<QComboBox>(*dialog_, "cmbMatchPatternNum");
  const NativePath file = folder_.At("LedrixPtn2.ini");
  number->setCurrentIndex(1);
  Press("BtnMPtnSEL");
  EXPECT_EQ(platform_.messages, (Texts{"Ledrix: 読み込むﾊﾟﾀｰﾝ番号2の情報がありません"}));
  Press("BtnMPtnDEL");  // nothing to delete, nothing to ask
  EXPECT_EQ(platform_.messages.size(), 1u);

  test::ModalScript script;
  NamePattern(script, "ﾊﾟﾀｰﾝ2", nullptr);
  NamePattern(script, "ﾊﾟﾀｰﾝ2", "");
  Press("BtnMPtnUPD");
  Press("BtnMPtnUPD");
  EXPECT_FALSE(test::FileExists(file));
  Set("inMatch", "7");
  Set("OptSpData2", "1");
  Set("inComboLstLst", "*.表");
  Set("CmbCompPrintLen", "80 (A4横:8ﾎﾟ)");
  Press("OptLineNoAdd");
  NamePattern(script, "ﾊﾟﾀｰﾝ2", " 表 用 ");
  Press("BtnMPtnUPD");
  EXPECT_EQ(Shown("txtMatchPattern1"), "表 用");
  Press("BtnEnd");
  EXPECT_EQ(dialog_->result(), QDialog::Rejected);
  EXPECT_EQ(options_.OptMatch, 5);  // only the pattern holds it

  patterns_ = PatternSlots(folder_.At(""));
  Open();
  EXPECT_EQ(Shown("txtMatchPattern1"), "");
  Find<QComboBox>(*dialog_, "cmbMatchPatternNum")->setCurrentIndex(1);
  Set("inComboCSVName", "mine");  // belongs to no pattern
  Press("BtnMPtnSEL");
  EXPECT_EQ(Shown("inComboCSVName"), "mine");
  EXPECT_EQ(Shown("txtMatchPattern1"), "表 用");
  EXPECT_EQ(Shown("inMatch") + Shown("OptSpData2") + Shown("inComboLstLst") +
                Shown("CmbCompPrintLen") + Shown("OptLineNoAdd"),
            "71*.表801");
  EXPECT_EQ(options_.OptMatch, 5);
  EXPECT_EQ(Refusal(), "");
  EXPECT_EQ(options_.OptMatch, 7);

  WindowPlatform boxes;
  LedrixFo dialog(options_, patterns_, boxes, last_tab_);
  Find<QComboBox>(dialog, "cmbMatchPatternNum")->setCurrentIndex(1);
  script.Answer("いいえ").Answer("はい");
  for (const bool gone : {false, true}) {
    Find<QAbstractButton>(dialog, "BtnMPtnDEL")->click();
    EXPECT_EQ(script.texts.back(), "Ledrix: ﾊﾟﾀｰﾝ番号2[ 表 用 ]を削除します。よろしいですか？");
    EXPECT_EQ(patterns_[1].name, gone ? "" : "表 用");
    EXPECT_EQ(test::FileExists(file), !gone);
  }
}

TEST_F(OptionsDialogActions, BadPatternFilesAndFoldersAreBorne) {
  folder_.Write("LedrixPtn1.ini", test::Sjis("[Pattern]\r\nName=x\r\n[Option]\r\nOptSTCol=\r\n"
                                             "OptMatch=99999999\r\nOptSpData=7\r\nOptSimple=-3\r\n"
                                             "ComboLstLst=表\r\nOptBuff=\x01\xFF"));
  Press("BtnMPtnSEL");
  EXPECT_EQ(Shown("CmbSTCol") + " " + Shown("inMatch") + " " + Shown("inBuff"), "1 99 1");
  EXPECT_EQ(Shown("OptSpData2") + Shown("OptSimple") + Shown("inLstout"), "1010");
  EXPECT_EQ(Refusal(), "Ledrix: ﾃｷｽﾄｺﾝﾍﾟｱ：結果ﾌｧｲﾙ拡張子に誤りが有ります（*文字がありません）");

  patterns_ = PatternSlots(NativePath("/proc/no/such/"));
  test::ModalScript script;
  NamePattern(script, "ﾊﾟﾀｰﾝ1", "名");
  Press("BtnMPtnUPD");
  EXPECT_EQ(
      platform_.messages.back(),
      "Ledrix: ﾊﾟﾀｰﾝを保存できません\n/proc/no/such/LedrixPtn1.ini\nファイルが見つかりません");
  EXPECT_EQ(Shown("txtMatchPattern0"), "");
}

TEST_F(OptionsDialogActions, EveryWayOfClosingRemembersTheTab) {
  struct Way {
    int opened_on;  // tabs counted from 0
    int closed_on;
    std::function<void(QWidget&)> close;
  };
  const auto press = [](const char* name) {
    return [name](QWidget& window) { Find<QPushButton>(window, name)->click(); };
  };
  const auto type = [](Qt::Key key) {
    return [key](QWidget& window) {
      QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
      QApplication::sendEvent(Find<QLineEdit>(window, "inMatch"), &event);
    };
  };
  const Way ways[] = {{7, 4, [](QWidget& window) { window.close(); }},
                      {4, 2, press("BtnOk")},
                      {2, 6, press("BtnEnd")},
                      {6, 0, type(Qt::Key_Return)},
                      {0, 1, type(Qt::Key_Escape)}};
  int last = 99;
  for (const Way& way : ways) {
    test::ModalScript script;
    script.Then([&way](QWidget& window) {
      auto* const strip = Find<QTabWidget>(window, "TabStrip1");
      EXPECT_EQ(strip->currentIndex(), way.opened_on);
      strip->setCurrentIndex(way.closed_on);
      for (int k = 0; k < strip->count(); ++k) {
        const std::string frame = "FrmOpt" + std::to_string(k + 1);
        EXPECT_EQ(Find<QWidget>(window, frame.c_str())->isVisible(), k == way.closed_on) << frame;
      }
      way.close(window);
    });
    LedrixFo(options_, patterns_, platform_, last).exec();
    EXPECT_EQ(last, way.closed_on);
  }
}

}  // namespace
}  // namespace ledrix
