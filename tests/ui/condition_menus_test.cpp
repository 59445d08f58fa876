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

// "NAME=CAPTION" of each visible entry, a "*" behind the checked one and a "!" behind one that
// cannot be chosen.
Texts Entries(const QMenu& menu) {
  Texts entries;
  for (const QAction* const entry : menu.actions()) {
    if (!entry->isVisible()) continue;
    entries.push_back(ToUtf8(entry->objectName() + "=" + entry->text()) +
                      (entry->isChecked() ? "*" : "") + (entry->isEnabled() ? "" : "!"));
  }
  return entries;
}

TEST(MatchMenu, ShowsAndSetsTheNumberOfLines) {
  struct Case {
    int16_t lines;
    Texts entries;
  };
  for (const Case& c :
       std::vector<Case>{{3,
                          {"MenuMatchLine0= 3行*", "MenuMatchLine1= 5行", "MenuMatchLine2= 8行",
                           "MenuMatchLine3=10行"}},
                         {10,
                          {"MenuMatchLine0= 3行", "MenuMatchLine1= 5行", "MenuMatchLine2= 8行",
                           "MenuMatchLine3=10行*"}},
                         {7,
                          {"MenuMatchLine0= 3行", "MenuMatchLine1= 5行", "MenuMatchLine2= 8行",
                           "MenuMatchLine3=10行", "MenuMatchLine4=Else(7行)*"}}}) {
    QMenu menu;
    OptionRecord options;
    MatchMenu match(menu, options);
    options.OptMatch = c.lines;
    match.Synchronise();
    EXPECT_EQ(Entries(menu), c.entries);
  }
  QMenu menu;
  OptionRecord options;
  options.OptMatch = 7;
  const MatchMenu match(menu, options);
  menu.findChild<QAction*>("MenuMatchLine4")->trigger();
  EXPECT_EQ(options.OptMatch, 7);
  EXPECT_EQ(Entries(menu).back(), "MenuMatchLine4=Else(7行)*");
  for (const auto& [entry, lines] :
       std::vector<std::pair<size_t, int>>{{0, 3}, {0, 3}, {1, 5}, {2, 8}, {3, 10}}) {
    auto& action = *menu.findChild<QAction*>("MenuMatchLine" + QString::number(entry));
    action.trigger();
    EXPECT_EQ(options.OptMatch, lines);
    EXPECT_TRUE(action.isChecked());
    EXPECT_EQ(Entries(menu).size(), 4u);
  }
}

TEST(PatternMenu, AppliesNamedPatterns) {
  QMenu menu;
  OptionRecord options;
  PatternSlots patterns(NativePath("/none/"));
  int applied = 0;
  PatternMenu pattern_menu(menu, options, patterns, [&applied] { ++applied; });
  EXPECT_FALSE(menu.menuAction()->isEnabled());
  EXPECT_EQ(Entries(menu), Texts());
  patterns[0].name = "A&B 表";
  patterns[2].name = "c";
  patterns[2].values.OptMatch = 7;
  patterns[2].values.ComboLstLst = "*.x";
  patterns[2].values.OptDbClick = 1;  // no value of a pattern
  pattern_menu.Rebuild();
  EXPECT_TRUE(menu.menuAction()->isEnabled());
  EXPECT_EQ(Entries(menu), (Texts{"MenuPattern0=A&&B 表", "MenuPattern2=c"}));
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
    Texts entries;
    const char* state;
  };
  const Texts standard{"MenuCharset0=標準*", "MenuCharset1=直接指定",
                       "MenuCharset2=FULLAUTO(遅め)"};
  const Texts two{"MenuCharset0=標準", "MenuCharset1=EUC-JP*", "MenuCharset2=UTF-8",
                  "MenuCharset3=直接指定", "MenuCharset4=FULLAUTO(遅め)"};
  for (const Case& c : std::vector<Case>{
           {"", "", standard, "標準 <>"},
           {"", "UTF-8", standard, "標準 <>"},
           {"EUC-JP  UTF-8 ", "euc-jp", two, "EUC-JP <EUC-JP>"},
           {" EUC-JP UTF-8", "EUC-JP", two, "EUC-JP <EUC-JP>"},
           {"",
            "fullauto(遅め)",
            {"MenuCharset0=標準", "MenuCharset1=直接指定", "MenuCharset2=FULLAUTO(遅め)*"},
            "FULLAUTO(遅め) <FULLAUTO(遅め)>"}}) {
    Charsets charsets;
    charsets.options.Charset = c.charset;
    charsets.options.CharsetCode = c.code;
    charsets.charsets.BuildCharsetMenu();
    EXPECT_EQ(Entries(charsets.menu), c.entries) << c.charset;
    EXPECT_EQ(charsets.State(), c.state) << c.code;
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
  charsets.Choose("EUC-JP");
  EXPECT_EQ(charsets.State(), "EUC-JP <EUC-JP>");
  charsets.Choose("no-such");
  EXPECT_EQ(charsets.State(), "EUC-JP <EUC-JP>");
  charsets.Choose("FULLAUTO(遅め)");
  charsets.Choose("A/B");
  EXPECT_EQ(charsets.State(), "FULLAUTO(遅め) <FULLAUTO(遅め)>");
  charsets.Choose("標準");
  EXPECT_EQ(charsets.State(), "標準 <>");
  EXPECT_EQ(script.texts, (Texts{"Ledrix: ご使用の環境では no-such の文字コードは使用できません",
                                 "Ledrix: ご使用の環境では no-such の文字コードは使用できません",
                                 "Ledrix: ご使用の環境では A/B の文字コードは使用できません"}));
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
      EXPECT_EQ(script.texts.back(), "Ledrix: ご使用の環境では " + std::string(c.refused) +
                                         " の文字コードは使用できません");
    }
  }
  EXPECT_EQ(Entries(charsets.menu).back(), "MenuCharset4=KOI8-R*");
  EXPECT_EQ(charsets.options.Charset, "EUC-JP");
  charsets.Choose("標準");
  charsets.Choose("KOI8-R");
  EXPECT_EQ(charsets.State(), "KOI8-R <KOI8-R>");
}

}  // namespace
}  // namespace ledrix
