#include "ui/program_commands.h"

#include "platform/files.h"
#include "platform/program_folder.h"

namespace ledrix {
namespace {

void OpenProgramFile(std::string_view name, DesktopActions& actions, PlatformServices& platform) {
  const NativePath path = FindProgramFile(name);
  const auto tell = [&](const char* what) {
    platform.ShowMessage({PathToUtf8(path) + what, kProgramTitle, MessageIcon::kInformation});
  };
  if (!PathExists(path)) {
    tell("が見つかりません");
  } else if (actions.OpenFile(path) == DesktopActions::OpenResult::kNoAssociation) {
    tell("の拡張子に ｱﾌﾟﾘｹｰｼｮﾝが関連付けされていません");
  }
}

}  // namespace

bool ClearSettings(SettingsStore& store, PlatformServices& platform) {
  const MessageAnswer answer = platform.ShowMessage(
      {"LedrixToolのレジストリのみをクリアします。\r"
       "処理終了後、ｺﾝﾄﾛｰﾙﾊﾟﾈﾙの「ｱﾌﾟﾘｹｰｼｮﾝの追加と削除」よりLedrixToolを削除してください。\r"
       "レジストリをクリアしてよろしいですか？",
       kProgramTitle, MessageIcon::kExclamation, MessageButtons::kYesNo, MessageAnswer::kNo});
  if (answer != MessageAnswer::kYes) return false;
  for (const char* section : {"Option", "Settings", ""}) store.ClearSettingKey(section);
  if (const Status failed = store.Save(); !failed.ok()) {
    platform.ReportTrouble(PathToUtf8(SettingsPath()) + ": " + DescribeError(failed.error()));
  }
  platform.ShowMessage(
      {"処理が終了しました\r"
       "ｺﾝﾄﾛｰﾙﾊﾟﾈﾙの「ｱﾌﾟﾘｹｰｼｮﾝの追加と削除」よりLedrixToolを削除してください。",
       kProgramTitle, MessageIcon::kInformation});
  return true;
}

void ShowHelp(DesktopActions& actions, PlatformServices& platform) {
  OpenProgramFile("Ledrix.chm", actions, platform);
}

void ShowReadme(DesktopActions& actions, PlatformServices& platform) {
  OpenProgramFile("Readme.txt", actions, platform);
}

}  // namespace ledrix
