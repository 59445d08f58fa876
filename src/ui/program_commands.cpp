#include "ui/program_commands.h"

#include "platform/files.h"
#include "platform/program_folder.h"

namespace ledrix {
namespace {

constexpr const char* kSettingsUnsaved = "設定を保存できません";

void OpenFile(const NativePath& path, DesktopActions& actions, PlatformServices& platform) {
  const auto tell = [&](const char* what) {
    platform.ShowMessage({PathToUtf8(path) + what, kProgramTitle, MessageIcon::kInformation});
  };
  if (!PathExists(path)) {
    tell("が見つかりません");
  } else if (actions.OpenFile(path) == DesktopActions::OpenResult::kNoAssociation) {
    tell("の拡張子に ｱﾌﾟﾘｹｰｼｮﾝが関連付けされていません");
  }
}

Message FileFailure(const char* what, const NativePath& path, const Error& error) {
  return {what + ("\n" + PathToUtf8(path) + "\n" + DescribeError(error))};
}

}  // namespace

void TellUnreadSettings(const SettingsStore& store, PlatformServices& platform) {
  if (store.unread().ok()) return;
  platform.ShowMessage(
      FileFailure("設定ファイルを読めません（標準の設定で動作し、終了時に保存しません）",
                  store.path(), store.unread().error()));
}

void SaveSettings(const SettingsStore& store, PlatformServices& platform) {
  if (!store.unread().ok()) return;
  if (const Status failed = store.Save(); !failed.ok()) {
    platform.ShowMessage(FileFailure(kSettingsUnsaved, store.path(), failed.error()));
  }
}

bool ClearSettings(SettingsStore& store, PlatformServices& platform) {
  const MessageAnswer answer = platform.ShowMessage(
      {"LedrixToolのレジストリのみをクリアします。\r"
       "処理終了後、ｺﾝﾄﾛｰﾙﾊﾟﾈﾙの「ｱﾌﾟﾘｹｰｼｮﾝの追加と削除」よりLedrixToolを削除してください。\r"
       "レジストリをクリアしてよろしいですか？",
       kProgramTitle, MessageIcon::kExclamation, MessageButtons::kYesNo, MessageAnswer::kNo});
  if (answer != MessageAnswer::kYes) return false;
  SettingsStore cleared = store;
  for (const char* section : {"Option", "Settings", ""}) cleared.ClearSettingKey(section);
  if (const Status failed = cleared.Save(); !failed.ok()) {
    platform.ShowMessage(FileFailure(kSettingsUnsaved, store.path(), failed.error()));
    return false;
  }
  store = std::move(cleared);
  platform.ShowMessage(
      {"処理が終了しました\r"
       "ｺﾝﾄﾛｰﾙﾊﾟﾈﾙの「ｱﾌﾟﾘｹｰｼｮﾝの追加と削除」よりLedrixToolを削除してください。",
       kProgramTitle, MessageIcon::kInformation});
  return true;
}

void ShowHelp(DesktopActions& actions, PlatformServices& platform) {
  const NativePath own = FindProgramFile("Ledrix.chm");
  const NativePath pages = FindProgramFile("help/index.html");
  OpenFile(PathExists(own) || !PathExists(pages) ? own : pages, actions, platform);
}

void ShowReadme(DesktopActions& actions, PlatformServices& platform) {
  OpenFile(FindProgramFile("Readme.txt"), actions, platform);
}

}  // namespace ledrix
