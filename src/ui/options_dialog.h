// The options dialog.
#pragma once

#include <QDialog>
#include <QPushButton>
#include <QTabWidget>

#include "platform/services.h"
#include "settings/option_record.h"
#include "settings/pattern_slots.h"
#include "ui/option_controls.h"
#include "ui/options_screen_tabs.h"
#include "ui/options_supplement_tab.h"

namespace ledrix {

// Edits `options` and accepts them only when they are valid; whatever else ends the dialog leaves
// them as they were. Patterns are saved and deleted at once. Nothing is written to the store.
//
// When the fixed output folder is wanted but missing, opening the dialog shows the message of that.
// `last_tab`, counted from 0, is the tab shown first and afterwards the one shown last (it outlives
// the dialog, not the program). All references must outlive the dialog.
class LedrixFo : public QDialog {
 public:
  LedrixFo(OptionRecord& options, PatternSlots& patterns, PlatformServices& platform, int& last_tab,
           QWidget* parent = nullptr);

  void done(int result) override;

 private:
  void AddTabs();
  void AddButtons();
  // As far as the screen is wide enough.
  void ShowWholeTabStrip();
  void AcceptIfValid();
  // Shows the tab of a control, switches it on and puts the cursor there.
  void GoTo(QWidget* control);
  // The Tab key goes through the fields before the buttons; Ctrl+Page Up and Ctrl+Page Down change
  // the tab.
  void PutButtonsLast();
  void AddTabKeys();
  void FocusFirstField();

  OptionRecord& options_;
  PlatformServices& platform_;
  int& last_tab_;
  OptionControls controls_;
  QTabWidget* const TabStrip1;
  QPushButton* const BtnOk;
  QPushButton* const BtnEnd;
  OutputFolderBox* const output_folder_;
  PatternBox* const patterns_;
  FontBox* const font_;
};

}  // namespace ledrix
