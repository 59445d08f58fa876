#include "ui/splitter_bars.h"

#include <QLayout>
#include <algorithm>

#include "settings/twips.h"
#include "ui/pane_splitter.h"
#include "ui/qt_text.h"

namespace ledrix {
namespace {

constexpr int kSideDefault = 2040 / kTwipsPerPixel;
constexpr int kMiddleDefault = 5265 / kTwipsPerPixel;
constexpr int kHalfMiddleStrip = 172 / kTwipsPerPixel;

constexpr const char* kMiddleKey = "SplitterM";
constexpr const char* kSideKeys[] = {"SplitterL", "SplitterR"};

int ReadBar(const SettingsStore& store, const char* key, int default_pixels) {
  constexpr int kFarthest = 20000;
  const int pixels = ReadPixels(store, key, default_pixels);
  return pixels >= 0 && pixels <= kFarthest ? pixels : default_pixels;
}

}  // namespace

SplitterBars::SplitterBars(PaneSplitter& between, const SidePair& sides)
    : between_(between), sides_(sides) {
  QObject::connect(&between, &QSplitter::splitterMoved, &between, [this] { NoteMoved(); });
}

void SplitterBars::Load(const SettingsStore& store) {
  const int mode = ToQString(store.ReadSetting("Settings", "RisizeMode", "0")).toInt();
  mode_ = static_cast<BarMode>(std::clamp(mode, 0, 2));
  for (size_t i = 0; i < 2; ++i) in_sides_[i] = ReadBar(store, kSideKeys[i], kSideDefault);
  middle_ = ReadBar(store, kMiddleKey, kMiddleDefault);
}

void SplitterBars::Store(SettingsStore& store) const {
  store.WriteSetting("Settings", "RisizeMode", std::to_string(static_cast<int>(mode_)));
  for (size_t i = 0; i < 2; ++i) WritePixels(store, kSideKeys[i], in_sides_[i]);
  WritePixels(store, kMiddleKey, middle_);
}

void SplitterBars::SetMode(BarMode mode) {
  mode_ = mode;
  const bool movable = mode != BarMode::kFixed;
  between_.LetBarMove(movable);
  for (FileFrame* const side : sides_) side->LetBarMove(movable);
  if (!movable) LayOut();
}

void SplitterBars::LayOut() {
  if (!between_.window()->isVisible()) return;
  const QWidget& center = *between_.parentWidget();
  center.layout()->activate();
  if (mode_ != BarMode::kAsTheyStand) middle_ = center.width() / 2 - kHalfMiddleStrip;
  between_.SetFirstWidth(middle_ - center.layout()->contentsMargins().left());
  for (const Side side : kBothSides) {
    FileFrame& frame = sides_[side];
    if (frame.parentWidget()->layout() != nullptr) frame.parentWidget()->layout()->activate();
    frame.MoveBar(in_sides_[IndexOf(side)]);
  }
}

void SplitterBars::NoteMoved() {
  const int left = between_.parentWidget()->layout()->contentsMargins().left();
  middle_ = between_.first_width() + left;
  for (const Side side : kBothSides) in_sides_[IndexOf(side)] = sides_[side].bar();
}

}  // namespace ledrix
