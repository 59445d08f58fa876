// The main window's size, its splitter bars, and how both are kept between runs.
#include <QApplication>
#include <QHeaderView>
#include <QLayout>
#include <QScreen>
#include <QSplitter>
#include <QToolButton>
#include <QTreeView>
#include <algorithm>

#include "settings/twips.h"
#include "ui/file_frame.h"
#include "ui/main_window.h"
#include "ui/qt_text.h"

namespace ledrix {
namespace {

constexpr int kSplitterDefault = 2040 / kTwipsPerPixel;
constexpr int kMiddleDefault = 5265 / kTwipsPerPixel;
constexpr int kHalfMiddleStrip = 172 / kTwipsPerPixel;
constexpr QSize kDesignSize(960, 620);
constexpr int kNameColumnDefault = 155;
constexpr int kDateColumnDefault = 116;

struct ModeLook {
  const char* symbol;
  const char* hint;
};
constexpr ModeLook kModes[] = {{"▽", "区切バー位置比率固定"},
                               {"⊿", "フォームリサイズ時に区切バー位置リセット"},
                               {"◇", "区切バー位置は常に可変"}};

constexpr const char* kColumnKeys[2][2] = {{"ColWidthOld1", "ColWidthOld2"},
                                           {"ColWidthNew1", "ColWidthNew2"}};

// The place of a splitter bar; what can be none is as good as missing.
int ReadBar(const SettingsStore& store, const char* key, int default_pixels) {
  constexpr int kFarthest = 20000;
  const int pixels = ReadPixels(store, key, default_pixels);
  return pixels >= 0 && pixels <= kFarthest ? pixels : default_pixels;
}

// True when enough of the title bar is on a screen to take hold of the window.
bool IsReachable(const QPoint& place, int width) {
  const QRect title(place + QPoint(width / 4, 0), QSize(width / 2, 1));
  const QList<QScreen*> screens = QApplication::screens();
  return std::any_of(screens.begin(), screens.end(), [&](const QScreen* screen) {
    return screen->availableGeometry().intersects(title);
  });
}

// Gives the first pane of a splitter a width and the second one the rest.
void SetFirst(QSplitter& splitter, int width) {
  const int all = splitter.width() - splitter.handleWidth();
  const int first = std::clamp(width, 0, std::max(all, 0));
  splitter.setSizes({first, all - first});
}

}  // namespace

void LedrixF0::RestoreGeometry() {
  const SettingsStore& store = program_.store;
  constexpr int kNone = -1000000;
  const int left = ReadPixels(store, "MainLeft", kNone);
  const int top = ReadPixels(store, "MainTop", kNone);
  const QSize screen = QApplication::primaryScreen()->availableSize();
  setMinimumSize(kDesignSize.boundedTo(screen));
  const QSize wanted(ReadPixels(store, "MainWidth", kDesignSize.width()),
                     ReadPixels(store, "MainHeight", kDesignSize.height()));
  resize(wanted.boundedTo(screen).expandedTo(minimumSize()));
  if (left != kNone && top != kNone && IsReachable({left, top}, width())) move(left, top);
  for (int index = 0; index < 2; ++index) {
    QHeaderView& header = *side(index).files().header();
    const int defaults[] = {kNameColumnDefault, kDateColumnDefault};
    for (int column = 0; column < 2; ++column) {
      const int wide = ReadPixels(store, kColumnKeys[index][column], defaults[column]);
      header.resizeSection(column, std::clamp(wide, header.minimumSectionSize(), screen.width()));
    }
  }
  RisizeMode =
      std::clamp(ToQString(store.ReadSetting("Settings", "RisizeMode", "0")).toInt(), 0, 2);
  SplitterL = ReadBar(store, "SplitterL", kSplitterDefault);
  SplitterR = ReadBar(store, "SplitterR", kSplitterDefault);
  SplitterM = ReadBar(store, "SplitterM", kMiddleDefault);
  connect(splitter_, &QSplitter::splitterMoved, this, [this] { NoteSplitters(); });
  for (int index = 0; index < 2; ++index) {
    connect(&side(index).splitter(), &QSplitter::splitterMoved, this, [this] { NoteSplitters(); });
  }
  splitter_->handle(1)->setObjectName("imgSplitter1");
  side(0).splitter().handle(1)->setObjectName("imgSplitter0");
  side(1).splitter().handle(1)->setObjectName("imgSplitter2");
}

void LedrixF0::StoreGeometry() {
  SettingsStore& store = program_.store;
  WritePixels(store, "MainLeft", x());
  WritePixels(store, "MainTop", y());
  WritePixels(store, "MainWidth", width());
  WritePixels(store, "MainHeight", height());
  for (int index = 0; index < 2; ++index) {
    const QHeaderView& header = *side(index).files().header();
    for (int column = 0; column < 2; ++column) {
      WritePixels(store, kColumnKeys[index][column], header.sectionSize(column));
    }
  }
  store.WriteSetting("Settings", "RisizeMode", std::to_string(RisizeMode));
  WritePixels(store, "SplitterL", SplitterL);
  WritePixels(store, "SplitterR", SplitterR);
  WritePixels(store, "SplitterM", SplitterM);
}

void LedrixF0::SetMode(int mode) {
  RisizeMode = mode;
  BtnWinMode->setText(kModes[mode].symbol);
  BtnWinMode->setToolTip(kModes[mode].hint);
  for (QSplitter* const splitter : {splitter_, &side(0).splitter(), &side(1).splitter()}) {
    splitter->handle(1)->setEnabled(mode != 0);
  }
  if (mode == 0) LayOut();
}

void LedrixF0::LayOut() {
  if (!isVisible()) return;
  centralWidget()->layout()->activate();
  if (RisizeMode != 2) SplitterM = centralWidget()->width() / 2 - kHalfMiddleStrip;
  const int left = centralWidget()->layout()->contentsMargins().left();
  SetFirst(*splitter_, SplitterM - left);
  for (int index = 0; index < 2; ++index) {
    FileFrame& frame = side(index);
    if (frame.parentWidget()->layout() != nullptr) frame.parentWidget()->layout()->activate();
    frame.layout()->activate();
    SetFirst(frame.splitter(), index == 0 ? SplitterL : SplitterR);
  }
}

// After the user has moved a bar.
void LedrixF0::NoteSplitters() {
  SplitterM = splitter_->sizes().first() + centralWidget()->layout()->contentsMargins().left();
  SplitterL = side(0).splitter().sizes().first();
  SplitterR = side(1).splitter().sizes().first();
}

void LedrixF0::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  LayOut();
}

void LedrixF0::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  LayOut();
}

}  // namespace ledrix
