#include "ui/window_state.h"

#include <QApplication>
#include <QRegion>
#include <QScreen>
#include <QStyle>
#include <algorithm>

#include "platform/version.h"
#include "settings/option_record.h"
#include "settings/twips.h"
#include "ui/program_commands.h"
#include "ui/qt_text.h"
#include "ui/window_platform.h"

namespace ledrix {
namespace {

constexpr QSize kDesignSize(960, 620);
constexpr int kNameDefault = 155;
constexpr int kDateDefault = 116;

constexpr const char* kColumnKeys[2][2] = {{"ColWidthOld1", "ColWidthOld2"},
                                           {"ColWidthNew1", "ColWidthNew2"}};
constexpr const char* kFolderKeys[] = {"EndPathOld", "EndPathNew"};
constexpr const char* kFilterKeys[] = {"ComboIdx0", "ComboIdx1"};

QSize ScreenSize() {
  return QApplication::primaryScreen()->availableSize();
}

int TitleHeight(const QWidget& window) {
  return window.style()->pixelMetric(QStyle::PM_TitleBarHeight);
}

// The screen that holds a point, or that the point misses least.
QRect NearestScreen(const QPoint& point) {
  const auto distance = [&](const QRect& screen) {
    const QPoint inside(std::clamp(point.x(), screen.left(), screen.right()),
                        std::clamp(point.y(), screen.top(), screen.bottom()));
    return (point - inside).manhattanLength();
  };
  QRect nearest = QApplication::primaryScreen()->availableGeometry();
  for (const QScreen* const screen : QApplication::screens()) {
    const QRect other = screen->availableGeometry();
    if (distance(other) < distance(nearest)) nearest = other;
  }
  return nearest;
}

// A place for a window with its title bar: the wanted one while the title bar is all on screens,
// or else the nearest at which as much of the window is on a screen as fits, from its top left on.
QPoint ReachablePlace(const QRect& wanted, int title_height) {
  QRegion screens;
  for (const QScreen* const screen : QApplication::screens()) {
    screens += screen->availableGeometry();
  }
  const QRect title(wanted.topLeft(), QSize(wanted.width(), title_height));
  if (screens.intersected(title) == QRegion(title)) return wanted.topLeft();
  const QRect screen = NearestScreen(title.center());
  return {std::max(std::min(wanted.left(), screen.right() + 1 - wanted.width()), screen.left()),
          std::max(std::min(wanted.top(), screen.bottom() + 1 - wanted.height()), screen.top())};
}

}  // namespace

void WindowState::Load() {
  LoadGeometry();
  bars_.Load(program_.store);
  LoadOptions(program_.store, program_.options);
}

void WindowState::LoadGeometry() {
  const SettingsStore& store = program_.store;
  constexpr int kNone = -1000000;
  const int left = ReadPixels(store, "MainLeft", kNone);
  const int top = ReadPixels(store, "MainTop", kNone);
  const int title_height = TitleHeight(window_);
  const QRect screen_there = NearestScreen(left == kNone ? QPoint() : QPoint(left, top));
  const QSize screen = screen_there.size() - QSize(0, title_height);
  // Larger than designed where the font of the desktop needs it.
  window_.setMinimumSize(kDesignSize.expandedTo(window_.minimumSizeHint()).boundedTo(screen));
  const QSize wanted(ReadPixels(store, "MainWidth", kDesignSize.width()),
                     ReadPixels(store, "MainHeight", kDesignSize.height()));
  window_.resize(wanted.boundedTo(screen).expandedTo(window_.minimumSize()));
  if (left != kNone && top != kNone) {
    window_.move(
        ReachablePlace({QPoint(left, top), window_.size() + QSize(0, title_height)}, title_height));
  }
}

void WindowState::LoadColumns() {
  for (const Side side : kBothSides) {
    const int defaults[] = {kNameDefault, std::max(kDateDefault, sides_[side].date_width())};
    for (int column = 0; column < 2; ++column) {
      const int width =
          ReadPixels(program_.store, kColumnKeys[IndexOf(side)][column], defaults[column]);
      sides_[side].SetColumnWidth(column, std::min(width, ScreenSize().width()));
    }
  }
}

void WindowState::LoadSides() {
  LoadColumns();
  const SettingsStore& store = program_.store;
  for (const Side side : kBothSides) {
    const NativePath folder =
        IsOn(program_.options.EndPath)
            ? NativePath(
                  store.ReadSetting("Option", kFolderKeys[IndexOf(side)], program_.folder.bytes()))
            : MakeAbsolute(NativePath());  // the current one
    const std::string filter = store.ReadSetting("Option", kFilterKeys[IndexOf(side)], "0");
    sides_[side].SetFilters(ToQString(filter).toInt());
    sides_[side].OpenFolder(MakeAbsolute(AddBackslash(folder)));
  }
}

void WindowState::Save() {
  SettingsStore& store = program_.store;
  if (!window_.isMinimized() && !window_.isMaximized() && !window_.isFullScreen()) StoreGeometry();
  for (const Side side : kBothSides) {
    store.WriteSetting("Option", kFilterKeys[IndexOf(side)],
                       std::to_string(sides_[side].filter_index()));
  }
  StoreVersion();
  SaveOptions(program_.options,
              {sides_[Side::kOld].folder().bytes(), sides_[Side::kNew].folder().bytes()}, store);
  SaveSettings(store, program_.platform);
}

void WindowState::StoreGeometry() {
  SettingsStore& store = program_.store;
  WritePixels(store, "MainLeft", window_.x());
  WritePixels(store, "MainTop", window_.y());
  WritePixels(store, "MainWidth", window_.width());
  WritePixels(store, "MainHeight", window_.height());
  for (const Side side : kBothSides) {
    for (int column = 0; column < 2; ++column) {
      WritePixels(store, kColumnKeys[IndexOf(side)][column], sides_[side].column_width(column));
    }
  }
  bars_.Store(store);
}

void WindowState::StoreVersion() {
  SettingsStore& store = program_.store;
  const QStringList version = QString(ProgramVersion()).split('.');
  const char* const keys[] = {"Major", "Minor", "Revision"};
  for (int i = 0; i < 3; ++i) {
    store.WriteSetting("Settings", keys[i], ToUtf8(version.value(i).rightJustified(2, '0')));
  }
  store.WriteSetting("Settings", "VerDisp", std::to_string(program_.options.VerDisp));
}

}  // namespace ledrix
