#include "ui/splitter_bars.h"

#include <QLayout>
#include <algorithm>
#include <utility>

#include "settings/twips.h"
#include "ui/pane_splitter.h"
#include "ui/qt_text.h"

namespace ledrix {
namespace {

constexpr int kSideDefault = 2040 / kTwipsPerPixel;
constexpr int kMiddleDefault = 5265 / kTwipsPerPixel;
constexpr int kHalfMiddleStrip = 172 / kTwipsPerPixel;
constexpr int kDefaultResultsPart = 3;  // of the height

constexpr const char* kMiddleKey = "SplitterM";
constexpr const char* kResultsKey = "SplitterO";
constexpr const char* kSideKeys[] = {"SplitterL", "SplitterR"};

int ReadBar(const SettingsStore& store, const char* key, int default_pixels) {
  constexpr int kFarthest = 20000;
  const int pixels = ReadPixels(store, key, default_pixels);
  return pixels >= 0 && pixels <= kFarthest ? pixels : default_pixels;
}

// From the outermost widget inwards, so that every size is the one that will be seen.
void ActivateLayouts(QWidget& innermost) {
  if (innermost.parentWidget() != nullptr) ActivateLayouts(*innermost.parentWidget());
  if (innermost.layout() != nullptr) innermost.layout()->activate();
}

int LeftOf(const QWidget& widget) {
  return widget.mapTo(widget.window(), QPoint(0, 0)).x();
}

}  // namespace

SplitterBars::SplitterBars(PaneSplitter& between, const SidePair& sides, QSplitter& results)
    : between_(between), sides_(sides), results_(results) {
  QObject::connect(&results, &QSplitter::splitterMoved, &results,
                   [this] { results_height_ = results_.sizes().last(); });
  QObject::connect(&between, &QSplitter::splitterMoved, &between, [this] { NoteMoved(); });
}

void SplitterBars::Load(const SettingsStore& store) {
  const int mode = ToQString(store.ReadSetting("Settings", "RisizeMode", "0")).toInt();
  mode_ = static_cast<BarMode>(std::clamp(mode, 0, 2));
  for (size_t i = 0; i < 2; ++i) in_sides_[i] = ReadBar(store, kSideKeys[i], kSideDefault);
  middle_ = ReadBar(store, kMiddleKey, kMiddleDefault);
  results_height_ = ReadBar(store, kResultsKey, 0);
}

void SplitterBars::Store(SettingsStore& store) const {
  store.WriteSetting("Settings", "RisizeMode", std::to_string(static_cast<int>(mode_)));
  for (size_t i = 0; i < 2; ++i) WritePixels(store, kSideKeys[i], in_sides_[i]);
  WritePixels(store, kMiddleKey, middle_);
  if (results_height_ > 0) WritePixels(store, kResultsKey, results_height_);
}

void SplitterBars::SetMode(BarMode mode) {
  mode_ = mode;
  const bool movable = mode != BarMode::kFixed;
  between_.LetBarMove(movable);
  for (FileFrame* const side : sides_) side->LetBarMove(movable);
  if (!movable) LayOut();
}

void SplitterBars::PlaceResults() {
  if (std::exchange(are_results_placed_, true)) return;
  const int all = results_.height() - results_.handleWidth();
  const int height = results_height_ > 0 ? results_height_ : all / kDefaultResultsPart;
  results_.setSizes({all - height, height});
}

void SplitterBars::LayOut() {
  const QWidget& window = *between_.window();
  if (!window.isVisible()) return;
  ActivateLayouts(*between_.parentWidget());
  PlaceResults();
  if (mode_ != BarMode::kAsTheyStand) middle_ = window.width() / 2 - kHalfMiddleStrip;
  between_.SetFirstWidth(middle_ - LeftOf(between_));
  for (const Side side : kBothSides) {
    FileFrame& frame = sides_[side];
    if (frame.parentWidget()->layout() != nullptr) frame.parentWidget()->layout()->activate();
    frame.MoveBar(in_sides_[IndexOf(side)]);
  }
}

void SplitterBars::NoteMoved() {
  middle_ = between_.first_width() + LeftOf(between_);
  for (const Side side : kBothSides) in_sides_[IndexOf(side)] = sides_[side].bar();
}

}  // namespace ledrix
