#include "ui/program_commands.h"

#include <gtest/gtest.h>

#include <QMessageBox>
#include <QPushButton>
#include <cstdlib>
#include <filesystem>

#include "ui/window_platform.h"
#include "ui/window_run.h"

namespace ledrix {
namespace {

using test::Texts;
using OpenResult = DesktopActions::OpenResult;

constexpr const char* kQuestion =
    "Ledrix: LedrixToolのレジストリのみをクリアします。\n"
    "処理終了後、ｺﾝﾄﾛｰﾙﾊﾟﾈﾙの「ｱﾌﾟﾘｹｰｼｮﾝの追加と削除」よりLedrixToolを削除してください。\n"
    "レジストリをクリアしてよろしいですか？";
constexpr const char* kDone =
    "Ledrix: 処理が終了しました\n"
    "ｺﾝﾄﾛｰﾙﾊﾟﾈﾙの「ｱﾌﾟﾘｹｰｼｮﾝの追加と削除」よりLedrixToolを削除してください。";

TEST(ProgramCommands, ClearTheSettingsWhenAllowed) {
  const test::TempFolder folder;
  const NativePath path = folder.At("settings.ini");
  WindowPlatform platform;
  SettingsStore store(path);
  store.WriteSetting("Option", "OptMatch", "8");
  store.WriteSetting("Settings", "VerDisp", "1");
  store.WriteSetting("Other", "x", "1");
  ASSERT_TRUE(store.Save().ok());
  {
    test::ModalScript script;
    script.Then([&script](QWidget& window) {
      auto& box = dynamic_cast<QMessageBox&>(window);
      EXPECT_EQ(box.icon(), QMessageBox::Warning);
      script.texts.push_back((box.windowTitle() + ": " + box.text()).toStdString());
      // The Enter key says No.
      EXPECT_TRUE(box.defaultButton()->text().startsWith("いいえ"));
      test::PressBoxButton(box, "いいえ");
    });
    EXPECT_FALSE(ClearSettings(store, platform));
    EXPECT_EQ(script.texts, Texts{kQuestion});
    EXPECT_EQ(store.ReadSetting("Option", "OptMatch", "none"), "8");
  }
  test::ModalScript script;
  script.Answer("はい").Answer("OK");
  EXPECT_TRUE(ClearSettings(store, platform));
  EXPECT_EQ(script.texts, (Texts{kQuestion, kDone}));
  EXPECT_EQ(test::ReadFile(path), "");
}

TEST(ProgramCommands, OpenHelpAndReadme) {
  const test::TempFolder folder;
  setenv("LEDRIX_HOME", folder.path().c_str(), 1);
  struct Case {
    void (*show)(DesktopActions&, PlatformServices&);
    const char* name;
  };
  WindowPlatform platform;
  for (const Case& c : {Case{ShowHelp, "Ledrix.chm"}, Case{ShowReadme, "Readme.txt"}}) {
    const std::string path = folder.At(c.name).bytes();
    test::RecordingActions actions;
    test::ModalScript script;
    script.Answer("OK").Answer("OK");
    c.show(actions, platform);
    EXPECT_EQ(actions.asked, Texts());
    folder.Write(c.name, "x");
    c.show(actions, platform);
    actions.open_result = OpenResult::kFailed;
    c.show(actions, platform);
    actions.open_result = OpenResult::kNoAssociation;
    c.show(actions, platform);
    EXPECT_EQ(actions.asked, Texts(3, "open " + path));
    EXPECT_EQ(script.texts,
              (Texts{"Ledrix: " + path + "が見つかりません",
                     "Ledrix: " + path + "の拡張子に ｱﾌﾟﾘｹｰｼｮﾝが関連付けされていません"}));
  }
  // The pages of the manual stand in for a help file.
  std::filesystem::create_directory(folder.At("help").bytes());
  folder.Write("help/index.html", "x");
  test::RecordingActions actions;
  ShowHelp(actions, platform);
  std::filesystem::remove(folder.At("Ledrix.chm").bytes());
  ShowHelp(actions, platform);
  EXPECT_EQ(actions.asked, (Texts{"open " + folder.At("Ledrix.chm").bytes(),
                                  "open " + folder.At("help/index.html").bytes()}));
  unsetenv("LEDRIX_HOME");
}

}  // namespace
}  // namespace ledrix
