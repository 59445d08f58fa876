// Rows of controls and the words between them.
#pragma once

#include <QHBoxLayout>
#include <QLabel>
#include <QWidget>
#include <initializer_list>
#include <vector>

namespace ledrix {

// One piece of a row: words, or a control that the row's window will own.
class RowPiece {
 public:
  RowPiece(const char* words) : widget_(new QLabel(words)) {}  // NOLINT: a row reads like its text
  RowPiece(QWidget* control) : widget_(control) {}             // NOLINT

  QWidget* widget() const { return widget_; }

 private:
  QWidget* widget_;
};

// The pieces from left to right; what room is left stays empty at the right.
inline QHBoxLayout* Row(std::initializer_list<RowPiece> pieces) {
  auto* const row = new QHBoxLayout;
  for (const RowPiece& piece : pieces) row->addWidget(piece.widget());
  row->addStretch();
  return row;
}

}  // namespace ledrix
