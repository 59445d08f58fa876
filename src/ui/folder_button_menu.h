// What the sides' folder buttons open: the history on a click, a menu of folders when held.
#pragma once

#include <QPoint>

#include "ui/side_pair.h"
#include "ui/window_program.h"

class QMenu;
class QTimer;

namespace ledrix {

class RunLog;

class FolderButtonMenu {
 public:
  // `window` owns the menu; all must outlive this.
  FolderButtonMenu(QWidget& window, const WindowProgram& program, const SidePair& sides,
                   RunLog& log);

  // The button of a side goes down; it goes up again, or the mouse leaves it; it went up under the
  // mouse.
  void Press(Side side);
  void Release();
  void Click(Side side);

 private:
  void AddFolder(int index, const char* caption, std::function<NativePath()> folder);
  void ShowMenu();
  void ShowHistory(Side side);

  QWidget& window_;
  const WindowProgram& program_;
  const SidePair sides_;
  RunLog& log_;
  QMenu* const POP_ChangeDir;
  QTimer* const Timer1;     // measures how long a button is held
  Side side_ = Side::kOld;  // whose button was pressed last
  bool was_brief_ = false;  // it went up before the menu came
};

}  // namespace ledrix
