// The two kinds of buttons of the main window.
#pragma once

#include <QPushButton>
#include <QToolButton>

namespace ledrix {

inline QToolButton* SymbolButton(const char* symbol, const char* hint) {
  auto* const button = new QToolButton;
  button->setText(symbol);
  button->setToolTip(hint);
  button->setAutoRaise(false);
  return button;
}

// One that the Enter key does not press.
inline QPushButton* CaptionButton(const char* caption, const char* hint) {
  auto* const button = new QPushButton(caption);
  button->setToolTip(hint);
  button->setAutoDefault(false);
  return button;
}

}  // namespace ledrix
