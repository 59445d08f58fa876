// The two tabs of the options dialog on the screen.
#pragma once

#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QWidget>

#include "ui/choosers.h"
#include "ui/option_controls.h"

namespace ledrix {

QWidget* MakeScreenTab(OptionControls& controls);

// Shows the font of the main window's lists and lets the user choose it.
class FontBox : public QGroupBox {
 public:
  FontBox();

  void Show(const FontChoice& font);
  const FontChoice& font() const { return font_; }

 private:
  QLabel* const OptFontNameSize;
  QPushButton* const BtnFontNameSize;
  QPushButton* const DefFontNameSize;
  FontChoice font_;
};

// `font_box` becomes the tab's.
QWidget* MakeFileTypesTab(OptionControls& controls, FontBox* font_box);

}  // namespace ledrix
