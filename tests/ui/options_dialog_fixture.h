// The options dialog with records of its own, pressed and filled as a user would.
#pragma once

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "support/test_run.h"
#include "ui/options_dialog.h"
#include "ui/qt_text.h"
#include "ui/window_test.h"

namespace ledrix::test {

class OptionsDialogTest : public ::testing::Test {
 protected:
  OptionsDialogTest() {
    setenv("LEDRIX_HOME", folder_.path().c_str(), 1);
    Open();
  }
  ~OptionsDialogTest() override { unsetenv("LEDRIX_HOME"); }

  void Open() {
    dialog_ = std::make_unique<LedrixFo>(options_, patterns_, platform_, last_tab_);
    dialog_->show();
  }
  void Press(const char* button) { Find<QAbstractButton>(*dialog_, button)->click(); }
  // What a user does to a control: clicks a box or an option button, types anything else.
  void Set(const char* name, const QString& text) {
    auto* const control = Find<QWidget>(*dialog_, name);
    if (auto* const button = dynamic_cast<QAbstractButton*>(control)) {
      if (button->isChecked() != (text == "1")) button->click();
    } else if (auto* const combo = dynamic_cast<QComboBox*>(control)) {
      combo->setEditText(text);
    } else {
      dynamic_cast<QLineEdit&>(*control).setText(text);
    }
  }
  std::string Shown(const char* name) {
    auto* const control = Find<QWidget>(*dialog_, name);
    if (auto* const button = dynamic_cast<QAbstractButton*>(control)) {
      return button->isChecked() ? "1" : "0";
    }
    if (auto* const combo = dynamic_cast<QComboBox*>(control)) return ToUtf8(combo->currentText());
    if (auto* const label = dynamic_cast<QLabel*>(control)) return ToUtf8(label->text());
    return ToUtf8(dynamic_cast<QLineEdit&>(*control).text());
  }
  bool IsEnabled(const char* name) { return Find<QWidget>(*dialog_, name)->isEnabled(); }
  // Presses OK and returns the message that refused, or an empty text when nothing did.
  std::string Refusal() {
    platform_.messages.clear();
    Press("BtnOk");
    return platform_.messages.empty() ? std::string() : platform_.messages.back();
  }

  const TempFolder folder_;
  OptionRecord options_;
  PatternSlots patterns_{folder_.At("")};
  JobRecord job_;
  RecordingPlatform platform_{job_};
  int last_tab_ = 0;
  std::unique_ptr<LedrixFo> dialog_;
};

}  // namespace ledrix::test
