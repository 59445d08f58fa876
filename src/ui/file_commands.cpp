#include "ui/file_commands.h"

#include "platform/file_copy.h"
#include "platform/files.h"
#include "ui/desktop_actions.h"
#include "ui/wait_cursor.h"
#include "ui/window_platform.h"

namespace ledrix {

void FileCommands::Open(const NativePath& path) {
  if (path.empty() || !GetFileInfo(path).ok()) return;
  if (actions_.OpenFile(path) != DesktopActions::OpenResult::kNoAssociation) return;
  platform_.ShowMessage({"ｱﾌﾟﾘｹｰｼｮﾝが関連付けされていません\r\n 拡張子( " +
                         PathToUtf8(NativePath(ExtensionOf(path))) + " )"});
}

bool FileCommands::Copy(const NativePath& from, const NativePath& to) {
  if (GetFileInfo(to).ok()) {
    const MessageAnswer answer = platform_.ShowMessage(
        {PathToUtf8(to) + "\r\nは既に存在します。上書きしますか？", kProgramTitle,
         MessageIcon::kQuestion, MessageButtons::kYesNo, MessageAnswer::kNo});
    if (answer != MessageAnswer::kYes) return false;
  }
  copying_ = true;
  platform_.AcceptInput(false);
  Status failed;
  {
    const WaitCursor wait;
    failed = CopyFile(from, to, [this] { platform_.YieldToUi(); });
  }
  platform_.AcceptInput(true);
  copying_ = false;
  if (!failed.ok()) {
    platform_.ShowMessage(
        {"コピーできません: " + DescribeError(failed.error()) + "\r\n" + PathToUtf8(to)});
  }
  return true;
}

bool FileCommands::Delete(const NativePath& path) {
  if (path.empty() || !GetFileInfo(path).ok()) return false;
  const MessageAnswer answer =
      platform_.ShowMessage({PathToUtf8(path) + "\r\nをごみ箱に移動しますか？", kProgramTitle,
                             MessageIcon::kQuestion, MessageButtons::kYesNo, MessageAnswer::kYes});
  if (answer != MessageAnswer::kYes) return false;
  if (!actions_.MoveToTrash(path)) {
    platform_.ShowMessage({"ごみ箱に移動できません\r\n" + PathToUtf8(path)});
  }
  return true;
}

}  // namespace ledrix
