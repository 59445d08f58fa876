// The keys of the main window that no menu entry has, and the help key of every window.
#pragma once

#include <QObject>
#include <functional>

#include "ui/side_pair.h"

namespace ledrix {

class ResultList;

// Ctrl+L goes to the path box, F6 and Shift+F6 go round the lists, Alt+Left and Alt+Right select
// namesakes, Ctrl+S swaps the folders, F8 and Shift+F8 go through the failures of the result list,
// and Del there empties it.
class MainKeys {
 public:
  // All must outlive this; `window` owns the keys.
  MainKeys(QWidget& window, const SidePair& sides, ResultList& results,
           const std::function<void()>& clear_results);

 private:
  void GoRound(int step);
  // The side that has the focus, otherwise the old one.
  FileFrame& FocusedSide() const;

  QWidget& window_;
  const SidePair sides_;
  ResultList& results_;
};

// Calls `help` when F1 is pressed in any window of the program but `window`, whose menu has that
// key, and not again before it has returned.
class HelpKey : public QObject {
 public:
  HelpKey(QWidget& window, std::function<void()> help);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  const std::function<void()> help_;
  bool is_helping_ = false;
};

}  // namespace ledrix
