// The dialog in which the user chooses a font: what is kept of one, and nothing else.
#pragma once

#include <QDialog>
#include <QString>

class QFontComboBox;
class QLabel;
class QSpinBox;

namespace ledrix {

class FontChooser : public QDialog {
 public:
  // Shows a font by its family, or by the one that stands in for it on this system, and its size in
  // points, at least 1.
  FontChooser(const QString& family, int points, QWidget* parent = nullptr);

  // The family chosen: the one given as long as the user has chosen no other.
  QString family() const;
  int points() const;

 private:
  void ShowSample();

  const QString family_;
  QFontComboBox* const families_;
  QSpinBox* const points_;
  QLabel* const sample_;
  QString stand_in_;
};

}  // namespace ledrix
