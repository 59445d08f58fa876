#include "ui/window_state.h"

#include <QApplication>
#include <QScreen>
#include <algorithm>

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

// True when enough of the title bar is on a screen to take hold of the window.
bool IsReachable(const QPoint& place, int width) {
  const QRect title(place + QPoint(width / 4, 0), QSize(width / 2, 1));
  const QList<QScreen*> screens = QApplication::screens();
  return std::any_of(screens.begin(), screens.end(), [&](const QScreen* screen) {
    return screen->availableGeometry().intersects(title);
  });
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
  const QSize screen = ScreenSize();
  window_.setMinimumSize(kDesignSize.boundedTo(screen));
  const QSize wanted(ReadPixels(store, "MainWidth", kDesignSize.width()),
                     ReadPixels(store, "MainHeight", kDesignSize.height()));
  window_.resize(wanted.boundedTo(screen).expandedTo(window_.minimumSize()));
  if (left != kNone && top != kNone && IsReachable({left, top}, window_.width())) {
    window_.move(left, top);
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
  const QStringList version = QString(LEDRIX_VERSION).split('.');
  const char* const keys[] = {"Major", "Minor", "Revision"};
  for (int i = 0; i < 3; ++i) {
    store.WriteSetting("Settings", keys[i], ToUtf8(version.value(i).rightJustified(2, '0')));
  }
  store.WriteSetting("Settings", "VerDisp", std::to_string(program_.options.VerDisp));
}

}  // namespace ledrix
