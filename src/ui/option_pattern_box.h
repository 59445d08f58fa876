// The part of the options dialog in which the condition patterns are kept.
#pragma once

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <array>

#include "platform/services.h"
#include "settings/pattern_slots.h"
#include "ui/option_controls.h"

namespace ledrix {

// Loads, saves and deletes the patterns, at once and whatever becomes of the dialog. It moves
// values between the slots and the controls of the pattern keys.
class PatternBox : public QGroupBox {
 public:
  PatternBox(OptionControls& controls, PatternSlots& patterns, PlatformServices& platform);

 private:
  QLayout* MakeButtons();
  QLayout* MakeNames();
  // The slot selected, counted from 0.
  size_t Selected() const;
  void ShowNames();
  // Tells why the file of a slot could not be used.
  void TellFailure(const char* what, size_t n, const Error& error);
  void Load();
  void Save();
  void Delete();

  OptionControls& controls_;
  PatternSlots& patterns_;
  PlatformServices& platform_;
  QComboBox* const cmbMatchPatternNum;
  QPushButton* const BtnMPtnSEL;
  QPushButton* const BtnMPtnUPD;
  QPushButton* const BtnMPtnDEL;
  std::array<QLabel*, kPatternSlots> txtMatchPattern{};
};

}  // namespace ledrix
