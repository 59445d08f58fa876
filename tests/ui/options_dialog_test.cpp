#include "ui/options_dialog.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QRadioButton>
#include <set>

#include "ui/options_dialog_fixture.h"

namespace ledrix {
namespace {

using test::Find;

class OptionsDialog : public test::OptionsDialogTest {};

struct Control {
  int tab;  // counted from 1
  const char* name;
  const char* caption;  // of a box or a button
  const char* key;      // nullptr: edits no option
  const char* typed;    // another value than the default
  const char* stored;   // what becomes of it in the record; nullptr: the same
};
constexpr Control kControls[] = {
    {1, "CmbSTCol", "", "OptSTCol", "3"},
    {1, "CmbEDCol", "", "OptEDCol", "72"},
    {1, "LblCompCol", "", nullptr, ""},
    {1, "inMatch", "", "OptMatch", "8"},
    {1, "inBuff", "", "OptBuff", "4000"},
    {1, "OptSpData0", "比較対象とする", nullptr, "0"},
    {1, "OptSpData1", "右ｽﾍﾟｰｽを無効", nullptr, "0"},
    {1, "OptSpData2", "全ｽﾍﾟｰｽを無効", "OptSpData", "1", "2"},
    {1, "OptTABtoSPACE", "TABｺｰﾄﾞを SPACE", "OptTABtoSPACE", "1"},
    {1, "OptTABtoKETA", "", "OptTABtoKETA", " 4x", "4"},
    {1, "OptUpperCase", "大文字と小文字を区別する", "OptUpperCase", "0"},
    {2, "inComboLstLst", "", "ComboLstLst", "*.表"},
    {2, "inLstout", "", "OptLstout", "99"},
    {2, "OptOutLineCnt", "全行出力", "OptOutLineCnt", "1"},
    {2, "CmbCompPrintLen", "", "PrintCompLen", "80 (A4横:8ﾎﾟ)", "80"},
    {2, "OptLineNoAdd", "先頭に行番号を付加する（出力幅を片側5ﾊﾞｲﾄ消費します）", "LineNoAdd", "1"},
    {2, "OptOutLineVar", "変更内容を１行毎縦交互に出力する（出力幅未調整）", "OptOutLineVar", "1"},
    {2, "OptNoCompList", "変更内容なしの場合、結果ﾌｧｲﾙを出力しない", "NoCompList", "1"},
    {2, "OptNTypeNextLine", "折り返し位置丁度の全角文字を次行に出力する", "NTypeNextLine", "0"},
    {2, "OptSimple", "出力形式をシンプルにする（全角文字未使用モード）", "OptSimple", "1"},
    {3, "OptContOutDirPath", "", "ContOutDirPath", "/tmp"},
    {3, "OptContOutDir", "出力結果ﾌｧｲﾙを出力するﾃﾞｨﾚｸﾄﾘを常に固定する（最優先）", "ContOutDir",
     "1"},
    {3, "BtnContOutDirPath", "参照...", nullptr, ""},
    {3, "OptNoCngNoOut", "ﾌｧｲﾙ日時ｻｲｽﾞが同じ場合、変更なし(SKIP)とする", "OptNoCngNoOut", "0"},
    {3, "TextNoPattern", "", "NoPattern", " *.obj ", "*.obj"},
    {3, "BtnDefltNo", "初期値", nullptr, ""},
    {3, "cmbMatchPatternNum", "", nullptr, ""},
    {3, "txtMatchPattern0", "", nullptr, ""},
    {3, "txtMatchPattern1", "", nullptr, ""},
    {3, "txtMatchPattern2", "", nullptr, ""},
    {3, "BtnMPtnSEL", "読込", nullptr, ""},
    {3, "BtnMPtnUPD", "保存", nullptr, ""},
    {3, "BtnMPtnDEL", "削除", nullptr, ""},
    {4, "inComboLstSbn", "", "ComboLstSbn", "*.SBN"},
    {4, "inComboCSVName", "", "ComboCSVName", "Ledrix.csv"},
    {4, "OptCsvStatus", "ｺﾝﾍﾟｱｽﾃｰﾀｽ(ｴﾗｰ、SKIP情報など)を出力する", "CsvStatus", "0"},
    {4, "OptMrgOld", "ﾏｰｼﾞｿｰｽ作成時、旧ｿｰｽを優先する", "MergeOld", "1"},
    {5, "inComboDLstSts", "", "ComboDLst", "*.dat"},
    {5, "CmbDCompPrintLen", "", "PrintDCompLen", "180 (A4横:8ﾎﾟ)", "180"},
    {5, "OptDCompOut0", "追加明細を出力", "DCompOut0", "0"},
    {5, "OptDCompOut1", "削除明細を出力", "DCompOut1", "0"},
    {5, "OptDCompOut2", "変更明細を出力", "DCompOut2", "1"},
    {5, "OptDCompSelect", "対象拡張子の絞込みを行う(OLDﾃﾞｨﾚｸﾄﾘﾌｧｲﾙﾀｲﾌﾟに合わせる)", "DCompSelect",
     "1"},
    {5, "OptDComp1s", "更新時刻 1秒のズレは同一とみなす ( NT x 9X 対応 )", "DComp1s", "1"},
    {5, "OptDComp9h", "更新時刻 9時間のズレは同一とみなす ( GMT +09:00 対応 )", "DComp9h", "1"},
    {5, "OptDCompKana", "名称比較 半角全角を区別する", "DCompKana", "0"},
    {5, "OptDCompBinary", "名称比較 大小文字を区別する", "DCompBinary", "1"},
    {6, "inComboStep", "", "ComboStp", "*.STP"},
    {7, "OptEndPath", "起動時に前回終了したパスから再開する", "EndPath", "0"},
    {7, "OptVerDisp", "起動時のﾊﾞｰｼﾞｮﾝ情報表示を省略する", "VerDisp", "1"},
    {7, "OptStartMsg", "処理開始時に「はい」「いいえ」の確認をする", "StartMsg", "0"},
    {7, "OptDbClick0", "関連付けAP起動", nullptr, "0"},
    {7, "OptDbClick1", "対ﾃﾞｨﾚｸﾄﾘ同名ﾌｧｲﾙ一発検索", "OptDbClick", "1"},
    {7, "OptSendToLDX", "「送る」ｺﾏﾝﾄﾞはLedrixﾃﾞｨﾚｸﾄﾘ内のSendToを使用する", "SendToLDX", "1"},
    {7, "OptDELMenuVisible", "「ﾌｧｲﾙ削除」のﾒﾆｭｰを非表示にする", "DELMenuVisible", "0"},
    {7, "OptDirBoxSClick", "ﾃﾞｨﾚｸﾄﾘﾎﾞｯｸｽはｼﾝｸﾞﾙｸﾘｯｸで開く", "DirBoxSClick", "0"},
    {7, "OptDirBoxSynchro", "ﾃﾞｨﾚｸﾄﾘﾎﾞｯｸｽはｼﾝｸﾛする (Shift+Clickで逆動作)", "DirBoxSynchro", "0"},
    {7, "OptOutListClear", "実行毎に結果一覧ﾘｽﾄﾎﾞｯｸｽをｸﾘｱする", "OutListClear", "1"},
    {8, "TextPatternTtl0", "", "FPatternTtl0", "C言語"},
    {8, "TextPatternTtl1", "", "FPatternTtl1", " ", "表"},
    {8, "TextPatternTtl2", "", "FPatternTtl2", " 表 ", ""},
    {8, "TextPattern0", "", "FPattern0", "*.c;*.h"},
    {8, "TextPattern1", "", "FPattern1", "", "*.CPY"},
    {8, "TextPattern2", "", "FPattern2", "*.CPY ", ""},
    {8, "BtnDeflt", "初期値", nullptr, ""},
    {8, "OptFontNameSize", "", nullptr, ""},
    {8, "BtnFontNameSize", "ﾌｫﾝﾄの選択...", nullptr, ""},
    {8, "DefFontNameSize", "初期値", nullptr, ""},
};

TEST_F(OptionsDialog, EveryControlStandsOnItsTabAndReachesTheRecordOnAccept) {
  std::set<std::string_view> unedited{"FontName", "FontSize", "Charset", "CharsetCode"};
  for (const Control& control : kControls) {
    auto* const widget = Find<QWidget>(*dialog_, control.name);
    const auto* const tab =
        Find<QWidget>(*dialog_, ("FrmOpt" + std::to_string(control.tab)).c_str());
    EXPECT_TRUE(tab->isAncestorOf(widget)) << control.name;
    const auto* const button = dynamic_cast<QAbstractButton*>(widget);
    EXPECT_EQ(button == nullptr ? "" : ToUtf8(button->text()), control.caption) << control.name;
    if (control.key != nullptr) Set(control.name, control.typed);
  }
  const OptionRecord before = options_;
  EXPECT_EQ(Refusal(), "");
  EXPECT_EQ(dialog_->result(), QDialog::Accepted);
  std::set<std::string_view> edited;
  for (const Control& control : kControls) {
    if (control.key == nullptr) continue;
    edited.insert(control.key);
    const OptionField& field = *FindOptionField(control.key);
    EXPECT_EQ(field.Get(options_), control.stored != nullptr ? control.stored : control.typed)
        << control.key;
  }
  for (const OptionField& field : OptionFields()) {
    if (edited.count(field.key) != 0) continue;
    EXPECT_EQ(unedited.erase(field.key), 1u) << field.key;
    EXPECT_EQ(field.Get(options_), field.Get(before)) << field.key;
  }
  Open();  // shows what was accepted
  EXPECT_EQ(Shown("CmbCompPrintLen"), "80");
  EXPECT_EQ(Shown("OptSpData2") + Shown("OptDbClick1") + Shown("OptUpperCase"), "110");
  EXPECT_EQ(Shown("TextPatternTtl1") + Shown("TextPattern1"), "表*.CPY");
}

TEST_F(OptionsDialog, ShowsTabsTextsAndPresets) {
  EXPECT_EQ(dialog_->windowTitle(), "ｵﾌﾟｼｮﾝ設定");
  EXPECT_EQ(Find<QPushButton>(*dialog_, "BtnEnd")->text(), "閉じる");
  const auto* const strip = Find<QTabWidget>(*dialog_, "TabStrip1");
  const char* const tabs[] = {"ﾃｷｽﾄｺﾝﾍﾟｱ比較条件", "ﾃｷｽﾄｺﾝﾍﾟｱ出力形式", "ﾃｷｽﾄｺﾝﾍﾟｱ補足",
                              "同時出力機能",      "ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱ",      "その他機能",
                              "画面制御(1)",       "画面制御(2)"};
  ASSERT_EQ(strip->count(), 8);
  for (int k = 0; k < 8; ++k) EXPECT_EQ(strip->tabText(k), tabs[k]);

  QStringList texts;
  for (const QLabel* const label : dialog_->findChildren<QLabel*>()) texts += label->text();
  for (const QGroupBox* const box : dialog_->findChildren<QGroupBox*>()) texts += box->title();
  for (const char* const text : {"比較範囲",
                                 "桁まで",
                                 "一致条件",
                                 "行同じ場合に同一行とみなす",
                                 "先読み行数",
                                 "行先まで検索する",
                                 "比較範囲内のｽﾍﾟｰｽ判定",
                                 "桁に置換え判定する",
                                 "結果ﾌｧｲﾙ拡張子",
                                 "出力幅（縦）",
                                 "変更行の前後",
                                 "行を出力",
                                 "99行指定時は全て出力します",
                                 "出力幅（横）",
                                 "桁で揃えて出力",
                                 "処理対象外(SKIP)条件",
                                 "ﾌｧｲﾙﾀｲﾌﾟ",
                                 "※ﾃｷｽﾄｺﾝﾍﾟｱ比較条件\nと ﾃｷｽﾄｺﾝﾍﾟｱ出力形式\nが対象",
                                 "差分ﾌｧｲﾙ （New側のみ抜粋した形式のﾌｧｲﾙ）",
                                 "拡張子",
                                 "CSVﾌｧｲﾙ （ｺﾝﾍﾟｱ結果行数だけをまとめた一覧形式）",
                                 "ﾌｧｲﾙ名称",
                                 "ﾃﾞｨﾚｸﾄﾘ情報ﾌｧｲﾙ拡張子",
                                 "出力幅",
                                 "ｽﾃｯﾌﾟｶｳﾝﾄ",
                                 "出力ﾌｧｲﾙ拡張子",
                                 " ﾌｧｲﾙﾘｽﾄﾎﾞｯｸｽでﾀﾞﾌﾞﾙｸﾘｯｸ ",
                                 "ﾕｰｻﾞ設定 ﾌｧｲﾙﾀｲﾌﾟ",
                                 "※ ﾃﾞｨﾚｸﾄﾘﾎﾞｯｸｽ、ﾌｧｲﾙﾘｽﾄﾎﾞｯｸｽ、結果一覧ﾘｽﾄﾎﾞｯｸｽ の ﾌｫﾝﾄ設定"}) {
    EXPECT_TRUE(texts.contains(text)) << text;
  }
  EXPECT_FALSE(texts.filter("*.xxx 形式で入力").isEmpty());

  const std::pair<const char*, const char*> presets[] = {
      {"inComboLstLst", "*_COMP.TXT|*.LST|*.TXT"},
      {"CmbCompPrintLen", "70|72|80 (A4横:8ﾎﾟ)|90 (A4縦:6ﾎﾟ)|100|120|150"},
      {"inComboLstSbn", "*_SBN.TXT|*.SBN"},
      {"inComboCSVName", "Ledrix.csv|Compare.csv"},
      {"inComboDLstSts", "*.ddf|*.dat"},
      {"CmbDCompPrintLen", "70|100|120 (A4縦:8ﾎﾟ)|150|180 (A4横:8ﾎﾟ)"},
      {"inComboStep", "*_STP.TXT|*.STP|*.TXT"},
      {"cmbMatchPatternNum", "1|2|3"}};
  for (const auto& [name, items] : presets) {
    const auto* const combo = Find<QComboBox>(*dialog_, name);
    QStringList shown;
    for (int i = 0; i < combo->count(); ++i) shown += combo->itemText(i);
    EXPECT_EQ(shown.join('|'), items) << name;
  }
  EXPECT_EQ(Shown("cmbMatchPatternNum"), "1");
  EXPECT_EQ(Shown("inComboCSVName"), "Ledrix.CSV");  // no preset takes its place
}

TEST_F(OptionsDialog, EnablesFieldsAndCountsColumns) {
  EXPECT_FALSE(IsEnabled("OptTABtoKETA"));
  EXPECT_TRUE(IsEnabled("inLstout"));
  Press("OptTABtoSPACE");
  Press("OptOutLineCnt");
  EXPECT_TRUE(IsEnabled("OptTABtoKETA"));
  EXPECT_FALSE(IsEnabled("inLstout"));
  Press("OptTABtoSPACE");
  Set("OptTABtoKETA", "17");  // checked all the same
  EXPECT_EQ(Refusal(), "Ledrix: ﾃｷｽﾄｺﾝﾍﾟｱ：TAB桁数に誤りが有ります（1～16桁）");

  EXPECT_EQ(Shown("LblCompCol"), "9999");
  Set("CmbSTCol", "10");
  EXPECT_EQ(Shown("LblCompCol"), "9990");
  Set("CmbEDCol", "5x");
  EXPECT_EQ(Shown("LblCompCol"), "-4");
}

TEST_F(OptionsDialog, NumericFieldsTakeDigitsOnly) {
  for (const char* const name : {"CmbSTCol", "CmbEDCol", "inMatch", "inBuff", "inLstout",
                                 "CmbCompPrintLen", "CmbDCompPrintLen", "OptTABtoKETA"}) {
    auto* const control = Find<QWidget>(*dialog_, name);
    auto* const combo = dynamic_cast<QComboBox*>(control);
    QWidget* const field = combo != nullptr ? combo->lineEdit() : control;
    Set(name, "");
    field->setEnabled(true);
    for (const QChar c : QString("1a-. 2あ\b３")) {
      QKeyEvent press(QEvent::KeyPress, c == '\b' ? Qt::Key_Backspace : Qt::Key_unknown,
                      Qt::NoModifier, c);
      QApplication::sendEvent(field, &press);
    }
    EXPECT_EQ(Shown(name), std::string(name) == "OptTABtoKETA" ? "1a-. 2３" : "1") << name;
  }
}

TEST_F(OptionsDialog, RefusesWithEveryMessageInItsOrder) {
  struct Fault {
    const char* control;
    const char* bad;
    const char* good;
    int tab;  // counted from 1
    const char* message;
  };
  constexpr const char* kTypes = "画面制御：ﾕｰｻﾞ設定 ﾌｧｲﾙﾀｲﾌﾟ ｵﾌﾟｼｮﾝ に誤りが有ります\r";
  const Fault faults[] = {
      {"CmbSTCol", "0", "10", 1, "ﾃｷｽﾄｺﾝﾍﾟｱ：比較範囲（開始）に誤りが有ります（1～9999桁）"},
      {"CmbEDCol", "10000", "5", 1, "ﾃｷｽﾄｺﾝﾍﾟｱ：比較範囲（終了）に誤りが有ります（1～9999桁）"},
      {"CmbEDCol", nullptr, "80", 1, "ﾃｷｽﾄｺﾝﾍﾟｱ：比較範囲（開始／終了）に誤りが有ります"},
      {"inMatch", "100", "99", 1, "ﾃｷｽﾄｺﾝﾍﾟｱ：一致条件に誤りが有ります（1～99行）"},
      {"inBuff", "", "1", 1, "ﾃｷｽﾄｺﾝﾍﾟｱ：先読み行数に誤りが有ります（1～4000行）"},
      {"TextNoPattern", " *.* ", "", 3, "ﾃｷｽﾄｺﾝﾍﾟｱ：対象外ﾌｧｲﾙﾀｲﾌﾟに全て(*.*)は指定できません"},
      {"inLstout", "0", "1", 2, "ﾃｷｽﾄｺﾝﾍﾟｱ：出力幅（縦）に誤りが有ります（1～99行）"},
      {"CmbCompPrintLen", "abc", "300", 2, "ﾃｷｽﾄｺﾝﾍﾟｱ：出力幅（横）に誤りが有ります（70～300桁）"},
      {"OptTABtoKETA", "0", "16", 1, "ﾃｷｽﾄｺﾝﾍﾟｱ：TAB桁数に誤りが有ります（1～16桁）"},
      {"inComboLstLst", "TXT", "*", 2,
       "ﾃｷｽﾄｺﾝﾍﾟｱ：結果ﾌｧｲﾙ拡張子に誤りが有ります（*文字がありません）"},
      {"inComboCSVName", " ", "a", 4, "同時出力：CSVﾌｧｲﾙ名称が未設定です"},
      {"inComboLstSbn", "＊", "*", 4,
       "同時出力：差分ﾌｧｲﾙ拡張子に誤りが有ります（*文字がありません）"},
      {"CmbDCompPrintLen", "301", "70", 5, "ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱ：出力幅に誤りが有ります（70～300桁）"},
      {"OptDCompOut0", "0", "1", 5, "ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱ：出力内容制限の設定に誤りが有ります"},
      {"inComboDLstSts", "", "*", 5,
       "ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱ：ﾌｧｲﾙ拡張子に誤りが有ります（*文字がありません）"},
      {"inComboStep", "", "*", 6, "ｽﾃｯﾌﾟｶｳﾝﾄ：出力ﾌｧｲﾙ拡張子に誤りが有ります（*文字がありません）"},
      {"TextPatternTtl0", " ", "C", 8, "（ﾀｲﾄﾙ未設定)  1 番目"},
      {"TextPattern1", "", "*.v", 8, "（ﾊﾟﾀｰﾝ未設定)  2 番目"},
      {"TextPatternTtl2", "x", "", 8, "（ﾊﾟﾀｰﾝ未設定)  3 番目"},
  };
  Set("OptDCompOut1", "0");
  Set("OptDCompOut2", "0");
  for (const Fault& fault : faults) {
    if (fault.bad != nullptr) Set(fault.control, fault.bad);
  }
  for (const Fault& fault : faults) {
    const std::string stem = fault.tab == 8 ? kTypes : "";
    EXPECT_EQ(Refusal(), "Ledrix: " + stem + fault.message);
    EXPECT_EQ(Find<QTabWidget>(*dialog_, "TabStrip1")->currentIndex() + 1, fault.tab);
    EXPECT_TRUE(dialog_->isVisible());
    Set(fault.control, fault.good);
  }
  EXPECT_EQ(options_.OptEDCol, 9999);
  EXPECT_EQ(Refusal(), "");
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_EQ(options_.OptEDCol, 80);
}

TEST_F(OptionsDialog, NonsenseIsRefusedOrTakenAndNothingElse) {
  const QString nonsense[] = {"", "abc", QString(10000, '9'), "😀*😀", "1\r\n2*\n\u2028\t3"};
  for (const Control& control : kControls) {
    for (const QString& text : nonsense) {
      options_ = OptionRecord();
      Open();
      auto* const widget = Find<QWidget>(*dialog_, control.name);
      auto* const combo = dynamic_cast<QComboBox*>(widget);
      auto* const edit = combo != nullptr ? combo->lineEdit() : dynamic_cast<QLineEdit*>(widget);
      if (edit == nullptr || control.key == nullptr) continue;
      QApplication::clipboard()->setText(text);
      edit->clear();
      edit->paste();
      const bool refused = !Refusal().empty();
      const OptionField& field = *FindOptionField(control.key);
      const std::string value = field.Get(options_);
      EXPECT_EQ(dialog_->isVisible(), refused) << control.name << ToUtf8(text.left(20));
      EXPECT_TRUE(!refused || value == field.default_text) << control.name << value.substr(0, 20);
      EXPECT_EQ(value.find_first_of("\r\n\t"), std::string::npos) << control.name;
      if (field.number != nullptr) {
        EXPECT_GE(field.number(options_), field.lowest) << control.name;
        EXPECT_LE(field.number(options_), field.highest) << control.name;
      }
    }
  }
}

}  // namespace
}  // namespace ledrix
