#include "ui/options_dialog.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QRadioButton>
#include <QTest>
#include <map>

#include "settings/option_draft.h"
#include "ui/options_dialog_fixture.h"

namespace ledrix {
namespace {

using test::Find;

class OptionsDialog : public test::OptionsDialogTest {};

// The controls of every option that is no flag: name, key, another value, what is stored of it.
const std::vector<std::vector<std::string>>& Controls() {
  static const auto kRows = test::ReadTable("option_controls.tsv");
  return kRows;
}

// The box for a flag goes by the flag's key.
std::string BoxOf(std::string_view flag) {
  if (flag == "MergeOld") return "OptMrgOld";
  return (flag.starts_with("Opt") ? "" : "Opt") + std::string(flag);
}

TEST_F(OptionsDialog, EveryControlReachesTheRecordOnAccept) {
  std::map<std::string, std::string, std::less<>> expected;
  for (const OptionField& field : OptionFields()) {
    expected[std::string(field.key.text())] = field.default_text;
    if (field.kind != OptionKind::kFlag || field.key == "DCompOut2") continue;
    expected[std::string(field.key.text())] = field.default_text == "0" ? "1" : "0";
    Set(BoxOf(field.key.text()).c_str(), ToQString(expected[std::string(field.key.text())]));
  }
  for (const auto& control : Controls()) {
    Set(control[0].c_str(), ToQString(control[2]));
    expected[control[1]] = control[3];
  }
  EXPECT_EQ(Refusal(), "");
  EXPECT_EQ(dialog_->result(), QDialog::Accepted);
  for (const OptionField& field : OptionFields()) {
    EXPECT_EQ(field.Get(options_), expected[std::string(field.key.text())]) << field.key.text();
  }
  Open();  // shows what was accepted
  EXPECT_EQ(Shown("CmbCompPrintLen"), "80");
  EXPECT_EQ(Shown("OptSpData2") + Shown("OptDbClick1") + Shown("OptUpperCase"), "110");
  EXPECT_EQ(Shown("TextPatternTtl1") + Shown("TextPattern1"), "表*.CPY");
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
    Set(name, "");
    control->setEnabled(true);
    for (const QChar c : QString("1a-. 2あ\b３")) {
      QKeyEvent press(QEvent::KeyPress, c == '\b' ? Qt::Key_Backspace : Qt::Key_unknown,
                      Qt::NoModifier, c);
      QApplication::sendEvent(control, &press);
    }
    const bool takes_all = std::string(name) == "OptTABtoKETA";
    EXPECT_EQ(Shown(name), takes_all ? "1a-. 2３" : "1") << name;
    QGuiApplication::clipboard()->setText(" 4x５");
    if (combo != nullptr) combo->setEditText("80 (A4)");
    auto& edit = combo != nullptr ? *combo->lineEdit() : dynamic_cast<QLineEdit&>(*control);
    edit.setCursorPosition(1);
    edit.paste();
    EXPECT_EQ(Shown(name), combo != nullptr ? "8450 (A4)" : takes_all ? "1 4x５a-. 2３" : "145");
  }
}

TEST_F(OptionsDialog, LeadsThroughTheFieldsBeforeTheButtons) {
  const auto focused = [&] { return ToUtf8(dialog_->focusWidget()->objectName()); };
  dialog_->activateWindow();
  ASSERT_TRUE(test::WaitUntil([&] { return dialog_->isActiveWindow(); }));
  for (const char* const first : {"CmbSTCol", "inComboLstLst", "OptContOutDir", "inComboLstSbn"}) {
    EXPECT_EQ(focused(), first);
    QTest::keyClick(dialog_.get(), Qt::Key_PageDown, Qt::ControlModifier);
  }
  for (int i = 0; i < 4; ++i) {
    QTest::keyClick(dialog_.get(), Qt::Key_PageUp, Qt::ControlModifier);
  }
  for (const char* const next : {"CmbEDCol", "inMatch", "inBuff", "OptSpData0", "OptTABtoSPACE",
                                 "OptUpperCase", "BtnOk", "BtnEnd"}) {
    QTest::keyClick(dialog_->focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(focused(), next);
  }
}

// The messages and their order are those of the draft.
TEST_F(OptionsDialog, ShowsTheTabOfWhatItRefuses) {
  OptionDraft draft(options_);
  const auto set = [&](const std::string& name, const std::string& text) {
    Set(name.c_str(), ToQString(text));
    std::string key = name.substr(3);  // of a flag of this table
    for (const auto& control : Controls()) {
      if (control[0] == name) key = control[1];
    }
    EXPECT_FALSE(draft.Set(key, text));
  };
  const auto faults = test::ReadTable("option_faults.tsv");
  for (const char* const name : {"OptDCompOut1", "OptDCompOut2"}) set(name, "0");
  for (const auto& fault : faults) set(fault[0], fault[1]);
  set("CmbEDCol", "10000");
  for (const auto& fault : faults) {
    EXPECT_EQ(Refusal(), "Ledrix: " + draft.Check().value_or("nothing")) << fault[0];
    EXPECT_EQ(Find<QTabWidget>(*dialog_, "TabStrip1")->currentIndex() + 1, std::stoi(fault[3]));
    EXPECT_TRUE(dialog_->isVisible());
    EXPECT_TRUE(dialog_->focusWidget()->isEnabled());
    EXPECT_EQ(dialog_->focusWidget()->objectName().left(9), ToQString(fault[0]).left(9));
    set(fault[0], fault[2]);
  }
  EXPECT_EQ(options_.OptEDCol, 9999);
  EXPECT_EQ(Refusal(), "");
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_EQ(options_.OptEDCol, 80);
}

TEST_F(OptionsDialog, NonsenseIsRefusedOrTakenAndNothingElse) {
  for (const QString& text : {QString(), QString("abc"), QString(10000, '9'), QString("😀*😀"),
                              QString("1\r\n2*\n\u2028\t3")}) {
    for (const auto& control : Controls()) {
      auto* const widget = Find<QWidget>(*dialog_, control[0].c_str());
      auto* const combo = dynamic_cast<QComboBox*>(widget);
      auto* const edit = combo != nullptr ? combo->lineEdit() : dynamic_cast<QLineEdit*>(widget);
      if (edit == nullptr) continue;
      const QString before = edit->text();
      QApplication::clipboard()->setText(text);
      edit->clear();
      edit->paste();
      const bool refused = !Refusal().empty();
      const OptionField& field = *FindOptionField(control[1]);
      const std::string value = field.Get(options_);
      EXPECT_EQ(dialog_->isVisible(), refused) << control[0] << ToUtf8(text.left(20));
      EXPECT_TRUE(!refused || value == field.default_text) << control[0] << value.substr(0, 20);
      EXPECT_EQ(value.find_first_of("\r\n\t"), std::string::npos) << control[0];
      if (field.number != nullptr) {
        EXPECT_GE(field.number(options_), field.lowest) << control[0];
        EXPECT_LE(field.number(options_), field.highest) << control[0];
      }
      options_ = OptionRecord();
      edit->setText(before);
      dialog_->show();
    }
  }
}

}  // namespace
}  // namespace ledrix
