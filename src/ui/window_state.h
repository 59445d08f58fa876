// What the main window keeps between runs: its place and size, the columns and bars of its lists,
// the options, and each side's folder and filter.
#pragma once

#include "ui/side_pair.h"
#include "ui/splitter_bars.h"
#include "ui/window_program.h"

namespace ledrix {

class WindowState {
 public:
  // All must outlive this.
  WindowState(QWidget& window, const WindowProgram& program, const SidePair& sides,
              SplitterBars& bars)
      : window_(window), program_(program), sides_(sides), bars_(bars) {}

  // Puts the window where it was, as far as a screen is there, and loads the options.
  void Load();
  // Sets the columns, once the lists have their font, and opens the folders.
  void LoadSides();
  // Writes the settings; trouble is told.
  void Save();

 private:
  void LoadGeometry();
  void LoadColumns();
  void StoreGeometry();
  void StoreVersion();

  QWidget& window_;
  const WindowProgram& program_;
  const SidePair sides_;
  SplitterBars& bars_;
};

}  // namespace ledrix
