#include "ui/file_commands.h"

#include <algorithm>

#include "platform/file_copy.h"
#include "platform/files.h"
#include "ui/desktop_actions.h"
#include "ui/wait_cursor.h"
#include "ui/window_platform.h"

namespace ledrix {
namespace {

// The first ones, one a line, and how many there are beside them.
std::string Lines(const std::vector<NativePath>& paths) {
  constexpr size_t kShown = 10;
  std::string lines;
  for (size_t i = 0; i < std::min(paths.size(), kShown); ++i) {
    lines += (i > 0 ? "\r\n" : "") + PathToUtf8(paths[i]);
  }
  if (paths.size() > kShown) lines += "\r\nほか " + std::to_string(paths.size() - kShown) + " 個";
  return lines;
}

}  // namespace

void FileCommands::Open(const NativePath& path) {
  Open(path, [&] {
    platform_.ShowMessage({"ｱﾌﾟﾘｹｰｼｮﾝが関連付けされていません\r\n 拡張子( " +
                           PathToUtf8(NativePath(ExtensionOf(path))) + " )"});
  });
}

void FileCommands::Open(const NativePath& path, const std::function<void()>& without_program) {
  if (path.empty() || !GetFileInfo(path).ok()) return;
  if (actions_.OpenFile(path) == DesktopActions::OpenResult::kNoAssociation) without_program();
}

bool FileCommands::Ask(const std::string& question, bool yes_by_default) {
  return platform_.ShowMessage(
             {question, kProgramTitle, MessageIcon::kQuestion, MessageButtons::kYesNo,
              yes_by_default ? MessageAnswer::kYes : MessageAnswer::kNo}) == MessageAnswer::kYes;
}

bool FileCommands::Copy(const std::vector<CopyPaths>& files) {
  std::vector<NativePath> replaced;
  for (const CopyPaths& file : files) {
    if (GetFileInfo(file.to).ok()) replaced.push_back(file.to);
  }
  if (!replaced.empty() &&
      !Ask(Lines(replaced) + "\r\nは既に存在します。上書きしますか？", false)) {
    return false;
  }
  copying_ = true;
  platform_.AcceptInput(false);
  std::string failures;
  {
    const WaitCursor wait;
    for (const CopyPaths& file : files) {
      const Status failed = CopyFile(file.from, file.to, [this] { platform_.YieldToUi(); });
      if (failed.ok()) continue;
      if (!failures.empty()) failures += "\r\n";
      failures +=
          "コピーできません: " + DescribeError(failed.error()) + "\r\n" + PathToUtf8(file.to);
    }
  }
  platform_.AcceptInput(true);
  copying_ = false;
  if (!failures.empty()) platform_.ShowMessage({failures});
  return true;
}

bool FileCommands::Delete(std::vector<NativePath> paths) {
  std::erase_if(paths,
                [](const NativePath& path) { return path.empty() || !GetFileInfo(path).ok(); });
  if (paths.empty() || !Ask(Lines(paths) + "\r\nをごみ箱に移動しますか？", true)) return false;
  std::erase_if(paths, [this](const NativePath& path) { return actions_.MoveToTrash(path); });
  if (!paths.empty()) platform_.ShowMessage({"ごみ箱に移動できません\r\n" + Lines(paths)});
  return true;
}

}  // namespace ledrix
