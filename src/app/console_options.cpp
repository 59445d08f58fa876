#include "app/console_options.h"

#include "platform/files.h"
#include "settings/option_draft.h"

namespace ledrix {
namespace {

std::optional<std::string> SetOption(OptionDraft& draft, const std::string& argument) {
  const size_t equals = argument.find('=');
  if (equals == std::string::npos) {
    return "--set には KEY=VALUE を指定してください: " + argument;
  }
  return draft.Set(argument.substr(0, equals), argument.substr(equals + 1));
}

}  // namespace

std::optional<std::string> LoadConsoleOptions(const CommonArguments& arguments,
                                              OptionRecord& options) {
  if (!arguments.settings_file.empty() && arguments.settings_file != "none") {
    return "設定ファイルはまだ使用できません: " + arguments.settings_file;
  }
  OptionDraft draft(options);
  for (const std::string& setting : arguments.settings) {
    if (auto refused = SetOption(draft, setting)) return refused;
  }
  if (auto refused = draft.Check()) return refused;
  draft.Accept(options);
  if (options.ContOutDir == 1 && !IsFolder(AddBackslash(NativePath(options.ContOutDirPath)))) {
    return "出力結果ﾌｧｲﾙを出力するﾃﾞｨﾚｸﾄﾘが見つかりません: " + options.ContOutDirPath;
  }
  if (!options.CharsetCode.empty()) {
    return "文字コードの変換はまだ使用できません: " + options.CharsetCode;
  }
  return std::nullopt;
}

}  // namespace ledrix
