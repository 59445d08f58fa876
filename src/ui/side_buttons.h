// The buttons between the two sides.
#pragma once

#include <QWidget>
#include <array>

#include "ui/side_pair.h"

class QToolButton;

namespace ledrix {

// Bring folders and selections of the sides together.
class SideButtons : public QWidget {
 public:
  explicit SideButtons(const SidePair& sides);

 private:
  void LayOut();
  void Connect();

  const SidePair sides_;
  const std::array<QToolButton*, 3> BtnEQ;
  const std::array<QToolButton*, 3> BtnEQSel;
};

}  // namespace ledrix
