// The reader, opened from the result list and on its own.
#include "ui/listing_window.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>
#include <filesystem>

#include "ui/listing_map.h"
#include "ui/window_dump.h"
#include "ui/window_run.h"

namespace ledrix {
namespace {

using test::Find;
using test::WaitUntil;
using test::WindowRun;

// The reader that is open; null without one.
ListingWindow* Reader() {
  for (QWidget* const window : QApplication::topLevelWidgets()) {
    if (window->objectName() == "ListingWindow" && window->isVisible())
      return dynamic_cast<ListingWindow*>(window);
  }
  return nullptr;
}

std::string Text(const char* label) {
  return Find<QLabel>(*Reader(), label)->text().toStdString();
}

void Trigger(const char* action) {
  Find<QAction>(*Reader(), action)->trigger();
}

// A listing of two blocks, changed and added, opened from the result list.
struct ReaderRun : WindowRun {
  ReaderRun() {
    std::string lines;
    for (int i = 0; i < 30; ++i) lines += "line " + std::to_string(i) + "\r\n";
    File("old/a", test::Sjis("給与\r\n") + lines + "END\r\n");
    File("new/a", test::Sjis("給料\r\n") + lines + test::Sjis("ｷｭｳﾖ\r\nEND\r\n"), 60);
    Set("OptMatch", "1");
    Open();
    options.StartMsg = 0;
    Select(0, "a");
    Select(1, "a");
    Click("BtnRun");
  }
  ~ReaderRun() {
    while (ListingWindow* const reader = Reader()) {
      reader->close();
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
  }
};

TEST(ListingWindow, OpensFromTheResultList) {
  ReaderRun run;
  ASSERT_EQ(Reader(), nullptr);
  run.Popup("OutList", "MenuPopView");
  ASSERT_NE(Reader(), nullptr);
  ASSERT_TRUE(WaitUntil([] { return Text("ViewCounts").find("合計") != std::string::npos; }));
  EXPECT_EQ(Text("ViewCounts"), "変更 1  追加 1  削除 0  合計 2  行数 旧 32 新 33");
  test::ExpectGolden("windows/listing_window.txt", test::DumpWindow(*Reader()), run.folder);
  Reader()->close();
  run.actions.open_result = DesktopActions::OpenResult::kNoAssociation;
  auto& results = *Find<QAbstractItemView>(*run.window, "OutList");
  emit results.doubleClicked(results.currentIndex());
  EXPECT_NE(Reader(), nullptr);
}

TEST(ListingWindow, GoesFromBlockToBlockAndCopiesASide) {
  ReaderRun run;
  run.Popup("OutList", "MenuPopView");
  ASSERT_TRUE(WaitUntil([] { return !Text("ViewCounts").empty(); }));
  EXPECT_TRUE(Text("ViewBlock").starts_with("ブロック 0 / 2"));
  Trigger("MenuViewNextBlock");
  EXPECT_TRUE(Text("ViewBlock").starts_with("ブロック 1 / 2"));
  Trigger("MenuViewNextBlock");
  Trigger("MenuViewNextBlock");
  EXPECT_TRUE(Text("ViewBlock").starts_with("ブロック 2 / 2"));
  const int64_t second = Reader()->current_line();
  Trigger("MenuViewPreviousBlock");
  EXPECT_LT(Reader()->current_line(), second);
  Trigger("MenuViewSelectAll");
  Trigger("MenuViewCopyNew");
  EXPECT_TRUE(run.actions.clipboard.starts_with("給料\nline 0\n"));
  EXPECT_TRUE(run.actions.clipboard.ends_with("ｷｭｳﾖ\nEND\n"));
  Trigger("MenuViewCopyOld");
  EXPECT_TRUE(run.actions.clipboard.ends_with("line 29\nEND\n")) << run.actions.clipboard;
  test::ModalScript script;
  script.Then([](QWidget& dialog) {
    Find<QLineEdit>(dialog, "GoToNumber")->setText("2");
    dynamic_cast<QDialog&>(dialog).accept();
  });
  Trigger("MenuViewGoTo");
  EXPECT_EQ(Reader()->current_line(), second);
  // The map's upper end is the listing's.
  QTest::mouseClick(Find<ListingMap>(*Reader(), "ListingMap"), Qt::LeftButton, {}, QPoint(5, 0));
  EXPECT_EQ(Reader()->current_line(), 0);
  Trigger("MenuViewOpenOld");
  EXPECT_EQ(run.actions.asked.back(), "open " + run.Path("old/a"));
}

TEST(ListingWindow, FindsTextAndFollowsTheFile) {
  ReaderRun run;
  run.Popup("OutList", "MenuPopView");
  Trigger("MenuViewFind");
  Find<QLineEdit>(*Reader(), "FindText")->setText("ＬＩＮＥ 2");
  ASSERT_TRUE(WaitUntil([] { return Text("FindCount") == "1 / 22 件"; })) << Text("FindCount");
  Trigger("MenuViewFindPrevious");
  EXPECT_EQ(Text("FindCount"), "22 / 22 件");
  Find<QCheckBox>(*Reader(), "FindWidth")->setChecked(true);
  ASSERT_TRUE(WaitUntil([] { return Text("FindCount") == "見つかりません"; }));
  Find<QLineEdit>(*Reader(), "FindText")->setText("キュウ");
  Find<QCheckBox>(*Reader(), "FindWidth")->setChecked(false);
  ASSERT_TRUE(WaitUntil([] { return Text("FindCount") == "1 / 1 件"; })) << Text("FindCount");
  run.File("new/a", "other\r\n", 120);
  run.Click("BtnRun");
  ASSERT_TRUE(WaitUntil([] { return Text("ViewCounts").find("新 1") != std::string::npos; }));
  ASSERT_TRUE(WaitUntil([] { return Text("FindCount") == "見つかりません"; }));
  std::filesystem::remove(run.Path("old/a_COMP.TXT"));
  EXPECT_TRUE(WaitUntil([] { return Text("ViewBlock").starts_with("ファイルがなくなりました"); }));
}

TEST(ListingWindow, TellsWhatCannotBeShown) {
  WindowRun run;
  test::ModalScript script;
  script.Answer("OK");
  EXPECT_EQ(
      ListingWindow::Open({run.platform, run.actions, run.store}, NativePath(run.Path("old"))),
      nullptr);
  ASSERT_EQ(script.texts.size(), 1u);
  EXPECT_NE(script.texts[0].find("ファイルではなくフォルダです"), std::string::npos);
}

}  // namespace
}  // namespace ledrix
