#include "ui/condition_menus.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QInputDialog>
#include <QMenu>

#include "support/test_run.h"
#include "ui/qt_text.h"
#include "ui/window_platform.h"
#include "ui/window_test.h"

namespace ledrix {
namespace {

using Texts = std::vector<std::string>;
using test::ModalScript;

// The captions of the visible entries, a "*" behind the checked one.
std::string Entries(const QMenu& menu) {
  std::string entries;
  for (const QAction* const entry : menu.actions()) {
    if (!entry->isVisible()) continue;
    entries +=
        ToUtf8((entries.empty() ? "" : "|") + entry->text()) + (entry->isChecked() ? "*" : "");
  }
  return entries;
}

TEST(MatchMenu, ShowsAndSetsTheNumberOfLines) {
  QMenu menu;
  OptionRecord options;
  MatchMenu match(menu, options);
  const std::pair<int16_t, const char*> cases[] = {{3, " 3行*| 5行| 8行|10行"},
                                                   {7, " 3行| 5行| 8行|10行|Else(7行)*"},
                                                   {10, " 3行| 5行| 8行|10行*"}};
  for (const auto& [lines, entries] : cases) {
    options.OptMatch = lines;
    match.Synchronise();
    EXPECT_EQ(Entries(menu), entries);
  }
  options.OptMatch = 7;
  match.Synchronise();
  for (const auto& [entry, lines] : {std::pair{4, 7}, std::pair{0, 3}, std::pair{0, 3},
                                     std::pair{1, 5}, std::pair{2, 8}, std::pair{3, 10}}) {
    auto& action = *menu.findChild<QAction*>("MenuMatchLine" + QString::number(entry));
    action.trigger();
    EXPECT_EQ(options.OptMatch, lines);
    EXPECT_TRUE(action.isChecked());
    EXPECT_EQ(menu.findChild<QAction*>("MenuMatchLine4")->isVisible(), entry == 4);
  }
}

TEST(PatternMenu, AppliesNamedPatterns) {
  QMenu menu;
  OptionRecord options;
  PatternSlots patterns(NativePath("/none/"));
  int applied = 0;
  PatternMenu pattern_menu(menu, options, patterns, [&applied] { ++applied; });
  EXPECT_FALSE(menu.menuAction()->isEnabled());
  EXPECT_EQ(Entries(menu), "");
  patterns[0].name = "A&B 表";
  patterns[2].name = "c";
  patterns[2].values.OptMatch = 7;
  patterns[2].values.ComboLstLst = "*.x";
  patterns[2].values.OptDbClick = 1;  // no value of a pattern
  pattern_menu.Rebuild();
  EXPECT_TRUE(menu.menuAction()->isEnabled());
  EXPECT_EQ(Entries(menu), "A&&B 表|c");
  menu.findChild<QAction*>("MenuPattern2")->trigger();
  EXPECT_EQ(applied, 1);
  EXPECT_EQ(options.OptMatch, 7);
  EXPECT_EQ(options.ComboLstLst, "*.x");
  EXPECT_EQ(options.OptDbClick, 0);
  patterns[0].name.clear();
  patterns[2].name.clear();
  pattern_menu.Rebuild();
  EXPECT_FALSE(menu.menuAction()->isEnabled());
}

std::string Unusable(const std::string& charset) {
  return "Ledrix: ご使用の環境では " + charset + " の文字コードは使用できません";
}

struct Charsets {
  QMenu menu;
  OptionRecord options;
  WindowPlatform platform;
  CharsetMenu charsets{menu, options, platform, nullptr};

  void Choose(const char* caption) {
    for (QAction* const entry : menu.actions()) {
      if (entry->text() == QString(caption)) return entry->trigger();
    }
    ADD_FAILURE() << caption;
  }
  // The checked entries and the option.
  std::string State() {
    std::string state;
    for (const QAction* const entry : menu.actions()) {
      if (entry->isChecked()) state += ToUtf8(entry->text()) + " ";
    }
    return state + "<" + options.CharsetCode + ">";
  }
};

TEST(CharsetMenu, IsBuiltOfTheOptions) {
  struct Case {
    const char* charset;
    const char* code;
    const char* entries;
    const char* chosen;
  };
  for (const Case& c :
       {Case{"", "UTF-8", "標準*|直接指定|FULLAUTO(遅め)|FULLAUTO(全体判定)", ""},
        Case{" EUC-JP  UTF-8 ", "euc-jp",
             "標準|EUC-JP*|UTF-8|直接指定|FULLAUTO(遅め)|FULLAUTO(全体判定)", "EUC-JP"},
        Case{"", "fullauto(遅め)", "標準|直接指定|FULLAUTO(遅め)*|FULLAUTO(全体判定)",
             "FULLAUTO(遅め)"}}) {
    Charsets charsets;
    charsets.options.Charset = c.charset;
    charsets.options.CharsetCode = c.code;
    charsets.charsets.BuildCharsetMenu();
    EXPECT_EQ(Entries(charsets.menu), c.entries) << c.charset;
    EXPECT_EQ(charsets.options.CharsetCode, c.chosen) << c.code;
  }
}

TEST(CharsetMenu, RefusesCharsetsThatCannotBeConverted) {
  Charsets charsets;
  charsets.options.Charset = "EUC-JP no-such A/B 標準";
  charsets.options.CharsetCode = "NO-SUCH";
  ModalScript script;
  script.Answer("OK").Answer("OK").Answer("OK");
  charsets.charsets.BuildCharsetMenu();
  EXPECT_EQ(charsets.State(), "標準 <>");
  for (const auto& [caption, state] :
       {std::pair("EUC-JP", "EUC-JP <EUC-JP>"), std::pair("no-such", "EUC-JP <EUC-JP>"),
        std::pair("FULLAUTO(遅め)", "FULLAUTO(遅め) <FULLAUTO(遅め)>"),
        std::pair("A/B", "FULLAUTO(遅め) <FULLAUTO(遅め)>"), std::pair("標準", "標準 <>")}) {
    charsets.Choose(caption);
    EXPECT_EQ(charsets.State(), state);
  }
  EXPECT_EQ(script.texts, (Texts{Unusable("no-such"), Unusable("no-such"), Unusable("A/B")}));
}

TEST(CharsetMenu, TakesATypedCharset) {
  Charsets charsets;
  charsets.options.Charset = "EUC-JP";
  charsets.charsets.BuildCharsetMenu();
  charsets.Choose("EUC-JP");
  ModalScript script;
  const auto type = [&script](const QString& text, const QString& button) {
    script.Then([text, button](QWidget& window) {
      auto& dialog = dynamic_cast<QInputDialog&>(window);
      EXPECT_EQ(dialog.windowTitle(), "文字コード指定");
      EXPECT_EQ(dialog.labelText(),
                "直接使用する文字コード(Charset)を指定してください\n"
                "なお exe再起動時にはリセットされます");
      EXPECT_EQ(dialog.textValue(), "");
      dialog.setTextValue(text);
      test::PressBoxButton(dialog, button);
    });
  };
  struct Case {
    const char* typed;
    const char* button;
    const char* refused;
    const char* state;
  };
  for (const Case& c : std::vector<Case>{{"KOI8-R", "ｷｬﾝｾﾙ", nullptr, "EUC-JP <EUC-JP>"},
                                         {"  ", "OK", nullptr, "EUC-JP <EUC-JP>"},
                                         {"標準", "OK", "標準", "EUC-JP <EUC-JP>"},
                                         {" x/y", "OK", " x/y", "EUC-JP <EUC-JP>"},
                                         {"KOI8-R", "OK", nullptr, "KOI8-R <KOI8-R>"},
                                         {"nonsense", "OK", "nonsense", "KOI8-R <KOI8-R>"}}) {
    type(c.typed, c.button);
    if (c.refused != nullptr) script.Answer("OK");
    charsets.Choose("直接指定");
    EXPECT_EQ(charsets.State(), c.state) << c.typed;
    if (c.refused != nullptr) {
      EXPECT_EQ(script.texts.back(), Unusable(c.refused));
    }
  }
  EXPECT_TRUE(Entries(charsets.menu).ends_with("|KOI8-R*"));
  EXPECT_EQ(charsets.options.Charset, "EUC-JP");
  charsets.Choose("標準");
  charsets.Choose("KOI8-R");
  EXPECT_EQ(charsets.State(), "KOI8-R <KOI8-R>");
}

}  // namespace
}  // namespace ledrix
