// The tab of the options dialog on the fixed output folder, on files left out and on patterns.
#pragma once

#include <QGroupBox>
#include <QPushButton>
#include <QWidget>

#include "platform/services.h"
#include "ui/option_controls.h"
#include "ui/option_pattern_box.h"

namespace ledrix {

// The folder that takes every result while its box is checked.
class OutputFolderBox : public QGroupBox {
 public:
  OutputFolderBox(OptionControls& controls, PlatformServices& platform);

  // Enables what the box enables. A folder that is wanted but missing is replaced by the program's
  // own, with a message; false then.
  bool ApplyRule();
  // The folder as the record takes it: absolute when it is wanted.
  std::string Folder() const;

 private:
  bool IsMissing() const;
  void Choose();

  OptionControls& controls_;
  PlatformServices& platform_;
  QCheckBox* const OptContOutDir;
  QLineEdit* const OptContOutDirPath;
  QPushButton* const BtnContOutDirPath;
};

// The boxes become the tab's.
QWidget* MakeSupplementTab(OptionControls& controls, OutputFolderBox* folder_box,
                           PatternBox* pattern_box);

}  // namespace ledrix
