// The splitter bars of the main window: between the sides, in each of them, and above the results.
#pragma once

#include <QSplitter>

#include "settings/settings_store.h"
#include "ui/side_pair.h"

namespace ledrix {

class PaneSplitter;

// What the bars do when the window changes its size, or the user pulls at them.
enum class BarMode {
  kFixed,       // they cannot be moved; the middle one stays in the middle
  kReset,       // the middle one goes back to the middle with each new size of the window
  kAsTheyStand  // all stay where they are
};

// Remembers where the bars are and puts them there.
class SplitterBars {
 public:
  // `results` has the bar above the result list, which the modes leave alone. All must outlive
  // this.
  SplitterBars(PaneSplitter& between, const SidePair& sides, QSplitter& results);

  // A place that can be none is as good as missing.
  void Load(const SettingsStore& store);
  void Store(SettingsStore& store) const;

  BarMode mode() const { return mode_; }
  void SetMode(BarMode mode);
  // For the size that the window has; nothing happens before it is shown.
  void LayOut();
  // After the user has moved a bar.
  void NoteMoved();

 private:
  void PlaceResults();

  PaneSplitter& between_;
  const SidePair sides_;
  QSplitter& results_;
  BarMode mode_ = BarMode::kFixed;
  // Device-independent pixels: the middle bar's from the window's left edge, the others' from the
  // side's.
  int middle_ = 0;
  std::array<int, 2> in_sides_{};
  int results_height_ = 0;  // 0: never moved
  bool are_results_placed_ = false;
};

}  // namespace ledrix
