// Where the outputs of a text compare go, and which are written beside the listing.
#pragma once

#include <QGroupBox>
#include <array>
#include <functional>

#include "run/run_services.h"

class QPushButton;
class QRadioButton;

namespace ledrix {

class OutputFrame : public QGroupBox {
 public:
  // All must outlive the frame; `changed` is called when the outputs of the next compare change.
  OutputFrame(OptionRecord& options, OutputChoices& choices, PlatformServices& platform,
              std::function<void()> changed, QWidget* parent = nullptr);

  // At the start of the window: the fixed folder when it is switched on and exists, otherwise the
  // old side's, with a message when the fixed one is missing.
  void ChooseAtStart();
  // After the options dialog.
  void FollowOptions();

 private:
  void Build();
  void Choose(int index);
  void ChooseElseFolder();
  void ShowChoice(int index);  // -1: none of the buttons

  OptionRecord& options_;
  OutputChoices& choices_;
  PlatformServices& platform_;
  const std::function<void()> changed_;
  const std::array<QRadioButton*, 3> OptListDir;
  QPushButton* const BtnListElse;
};

}  // namespace ledrix
