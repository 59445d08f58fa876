// Every text of every window against the room that it has, with several fonts and at several
// scales; a program's scale is fixed when it starts, so each is measured by a program of its own.
#include <gtest/gtest.h>

#include <QAbstractScrollArea>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPushButton>
#include <QScreen>
#include <QStyleOptionComboBox>
#include <QTabBar>
#include <QTabWidget>
#include <cstdlib>
#include <filesystem>

#include "settings/twips.h"
#include "support/program.h"
#include "ui/history_window.h"
#include "ui/options_dialog.h"
#include "ui/version_window.h"
#include "ui/window_run.h"

namespace ledrix {
namespace {

using test::Find;
using test::WindowRun;

const char* const kScale = std::getenv("LEDRIX_TEST_SCALE");

template <class... Kinds>
bool IsOneOf(const QWidget& widget) {
  return ((dynamic_cast<const Kinds*>(&widget) != nullptr) || ...);
}

// The width of what a control has to show less that of the place where it shows it.
int Excess(const QWidget& widget) {
  const auto width = [&](const QString& text) {
    return widget.fontMetrics().size(Qt::TextShowMnemonic, text).width();
  };
  if (const auto* const button = dynamic_cast<const QPushButton*>(&widget)) {
    QStyleOptionButton option;
    option.initFrom(&widget);
    return width(button->text()) -
           widget.style()->subElementRect(QStyle::SE_PushButtonContents, &option, &widget).width();
  }
  if (const auto* const combo = dynamic_cast<const QComboBox*>(&widget)) {
    QStyleOptionComboBox option;
    option.initFrom(&widget);
    option.editable = combo->isEditable();
    const QRect field = widget.style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                       QStyle::SC_ComboBoxEditField, &widget);
    int widest = width(combo->currentText());
    for (int i = 0; i < combo->count(); ++i) widest = std::max(widest, width(combo->itemText(i)));
    return widest + 2 - field.width();
  }
  if (const auto* const header = dynamic_cast<const QHeaderView*>(&widget)) {
    int most = 0;
    for (int i = 0; i < header->count() && header->orientation() == Qt::Horizontal; ++i) {
      most = std::max(most, header->sectionSizeHint(i) - header->sectionSize(i));
    }
    return most;
  }
  if (const auto* const edit = dynamic_cast<const QLineEdit*>(&widget)) {
    const bool is_any = !edit->isReadOnly() && edit->minimumWidth() != edit->maximumWidth();
    return is_any ? 0 : width(edit->text()) + 4 - edit->contentsRect().width();
  }
  if (IsOneOf<QGroupBox>(widget)) return widget.minimumSizeHint().width() - widget.width();
  const bool may_be_cut = widget.sizePolicy().horizontalPolicy() == QSizePolicy::Ignored;
  return IsOneOf<QAbstractButton, QLabel, QTabBar, QMenuBar>(widget) && !may_be_cut
             ? widget.sizeHint().width() - widget.width()
             : 0;
}

// Of a control and all in it: its texts are shown whole, and nothing covers anything. With colours
// of its own it would not follow the desktop's.
void ExpectRoom(const QWidget& widget, const std::string& where) {
  const auto name = [&where](const QWidget& of) {
    return where + ": " + of.metaObject()->className() + " " + of.objectName().toStdString() + " " +
           of.property("text").toString().toStdString();
  };
  EXPECT_LE(Excess(widget), 0) << name(widget) << " is cut";
  EXPECT_TRUE(Excess(widget) == 0 || widget.height() >= widget.fontMetrics().height())
      << name(widget);
  EXPECT_FALSE(widget.testAttribute(Qt::WA_SetPalette)) << name(widget);
  if (IsOneOf<QAbstractScrollArea, QComboBox, QTabBar>(widget)) return;
  QList<const QWidget*> shown;
  for (const auto* const child : widget.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
    if (!child->isVisible() || child->isWindow() || child->objectName() == "PicStsValue") continue;
    EXPECT_TRUE(widget.rect().contains(child->geometry())) << name(*child);
    for (const QWidget* const other : shown) {
      EXPECT_FALSE(child->geometry().intersects(other->geometry()))
          << name(*child) << " and " << name(*other);
    }
    if (!child->inherits("QSizeGrip")) shown += child;
    ExpectRoom(*child, where);
  }
}

// At the least size that a window allows.
void Measure(QWidget& window, const std::string& where) {
  if (!window.isVisible()) window.show();
  for (int i = 0; i < 6; ++i) {
    QCoreApplication::processEvents();
    window.resize(0, 0);
  }
  ExpectRoom(window, where);
}

void MeasureDialogs(WindowRun& run, const std::string& font) {
  PatternSlots patterns(run.home.At(""));
  int tab = 0;
  constexpr OptionKey kNumbers[] = {"OptSTCol",  "OptEDCol",     "OptMatch",    "OptBuff",
                                    "OptLstout", "OptTABtoKETA", "PrintCompLen"};
  for (const OptionKey key : kNumbers) FieldOf(key).Set(run.options, "9999");
  LedrixFo options(run.options, patterns, run.platform, tab, run.window.get());
  auto& tabs = *Find<QTabWidget>(options, "TabStrip1");
  for (tab = 0; tab < tabs.count(); ++tab) {
    tabs.setCurrentIndex(tab);
    Measure(options, font + " options " + tabs.tabText(tab).toStdString());
  }
  RunLog log(run.home.At(""), run.platform);
  LedrixFr history(log, run.store, Side::kOld, {});
  Measure(history, font + " history");
  for (const auto use : {LedrixFv::Use::kOnDemand, LedrixFv::Use::kSplash}) {
    LedrixFv version(use, run.actions);
    Measure(version, font + " version");
  }
}

void MeasureModals(WindowRun& run, const std::string& font) {
  test::ModalScript script;
  const auto measure = [&font](const char* name) {
    return [font = font, name](QWidget& window) {
      Measure(window, font + " " + name);
      window.close();
    };
  };
  run.Click("BtnEQSel2");
  script.Then(measure("run dialog asks"));
  run.Click("BtnRun");
  run.options.StartMsg = 0;
  std::filesystem::remove(run.Path("new/a"));
  const test::ModalScript::Step measure_running = [&](QWidget& box) {
    // The dialog itself may be seen before its job has told anything.
    if (box.objectName() == "LedrixF1") {
      script.Then(measure_running);
      return;
    }
    auto& dialog = *Find<QWidget>(*run.window, "LedrixF1");
    for (const char* text : {"", "ISO-2022-JP-2004 変換中 ･･･ 100%", "FileCount:2147483647"}) {
      Find<QLabel>(dialog, "LblBar")->setText(text);
      Measure(dialog, font + " run dialog " + text);
    }
    measure("message box")(box);
  };
  script.Then(measure_running);
  run.Click("BtnRun");
  run.platform.ReportTrouble("何か: 読めません");
  script.Then(measure("troubles"));
  auto* const panel = Find<QWidget>(*run.window, "PanelTrouble");
  QMouseEvent click(QEvent::MouseButtonRelease, QPointF(1, 1), panel->mapToGlobal(QPointF(1, 1)),
                    Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
  QCoreApplication::sendEvent(panel, &click);
}

TEST(Room, IsThereForEveryText) {
  for (const char* family : {"DejaVu Sans", "IPAPGothic", "IPAGothic"}) {
    for (int size = 9; kScale != nullptr && size <= 14; ++size) {
      QApplication::setFont(QFont(family, size));
      WindowRun run;
      for (const char* name : {"old/a", "new/a"}) run.File(name, name);
      const std::string font = family + std::string(" ") + std::to_string(size);
      Measure(run.Open(), font + " main");
      if (font == "DejaVu Sans 9") {
        EXPECT_EQ(run.window->minimumSize(), QSize(960, 620));
      }
      MeasureDialogs(run, font);
      MeasureModals(run, font);
    }
  }
  for (const char* scale : {"1", "1.5", "2"}) {
    if (kScale != nullptr) break;
    const test::TempFolder folder;
    const NativePath screen =
        folder.Write("screen", R"({"screens":[{"name":"","x":0,"y":0,"width":3840,"height":2400,)"
                               R"("logicalDpi":96,"logicalBaseDpi":96,"dpr":1}]})");
    const test::ProgramResult measured =
        test::RunProgram({"/proc/self/exe", "--gtest_filter=Room.*"},
                         {.environment = {"QT_QPA_PLATFORM=offscreen:configfile=" + screen.bytes(),
                                          std::string("QT_SCALE_FACTOR=") + scale,
                                          std::string("LEDRIX_TEST_SCALE=") + scale}});
    EXPECT_EQ(measured.status, 0) << "scale " << scale << "\n" << measured.out;
  }
}

TEST(Room, IsOnTheScreenForTheTitleBar) {
  if (kScale == nullptr) return;
  QApplication::setFont(QFont("DejaVu Sans", 9));
  const QRect screen = QApplication::primaryScreen()->availableGeometry();
  const int title = QApplication::style()->pixelMetric(QStyle::PM_TitleBarHeight);
  const QPoint corner(screen.right() + 1 - 960, screen.bottom() + 1 - 620 - title);
  const QSize size(960, 620);
  const QSize whole = screen.size() - QSize(0, title);
  const std::pair<QRect, QRect> cases[] = {
      // as stored, as shown
      {{{10, 20}, size}, {{10, 20}, size}},
      {{{-500, 20}, size}, {{0, 20}, size}},
      {{{corner.x() + 9, 20}, size}, {{corner.x(), 20}, size}},
      {{{50, corner.y() + 200}, size}, {{50, corner.y() + 200}, size}},
      {{{50, screen.bottom() - 9}, size}, {{50, corner.y()}, size}},
      {{{9000, 9000}, size}, {corner, size}},
      {{{-9000, -9000}, size}, {{0, 0}, size}},
      {{{9, 9}, 9 * screen.size()}, {{0, 0}, whole}}};
  for (const auto& [stored, shown] : cases) {
    WindowRun run;
    WritePixels(run.store, "MainLeft", stored.x());
    WritePixels(run.store, "MainTop", stored.y());
    WritePixels(run.store, "MainWidth", stored.width());
    WritePixels(run.store, "MainHeight", stored.height());
    const LedrixF0& window = run.Open();
    EXPECT_EQ(QRect(window.pos(), window.size()), shown) << stored.x();
  }
}

}  // namespace
}  // namespace ledrix
