#include "app/console_options.h"

#include <vector>

#include "app/console_help.h"
#include "app/console_platform.h"
#include "charset/line_converter.h"
#include "charset/read_with_conversion.h"
#include "platform/program_folder.h"
#include "settings/option_draft.h"
#include "settings/settings_store.h"

namespace ledrix {
namespace {

std::optional<std::string> SetOption(OptionDraft& draft, const std::string& argument) {
  const size_t equals = argument.find('=');
  if (equals == std::string::npos) {
    return "--set には KEY=VALUE を指定してください: " + argument;
  }
  const std::string key = argument.substr(0, equals);
  auto refused = draft.Set(key, argument.substr(equals + 1));
  if (!refused || FindOptionField(key) != nullptr) return refused;
  std::vector<std::string_view> keys;
  for (const OptionField& field : OptionFields()) keys.push_back(field.key.text());
  return *refused + DidYouMean(key, keys);
}

std::optional<std::string> CheckFixedFolder(const OptionRecord& options) {
  if (!IsOn(options.ContOutDir) || IsFixedFolder(options.ContOutDirPath)) return std::nullopt;
  return "出力結果ﾌｧｲﾙを出力するﾃﾞｨﾚｸﾄﾘが見つかりません: " + options.ContOutDirPath;
}

// The user's own settings may not be there yet; a file named on the command line must be. To go on
// without the user's own takes a decision of his.
std::optional<std::string> LoadStoredOptions(const std::string& settings_file,
                                             OptionRecord& options) {
  if (settings_file == "none") return std::nullopt;
  const bool own = settings_file.empty();
  const NativePath path = own ? SettingsPath() : MakeAbsolute(NativePath(settings_file));
  SettingsStore store(path);
  const Status unread = store.Load();
  if (!unread.ok() && !(own && unread.error().IsMissing())) {
    const std::string reason = PathToUtf8(path) + ": " + DescribeError(unread.error());
    return own ? reason + "（" + kWithoutSettings + "）" : reason;
  }
  LoadOptions(store, options);
  return std::nullopt;
}

}  // namespace

std::optional<std::string> LoadConsoleOptions(const CommonArguments& arguments,
                                              OptionRecord& options) {
  if (auto refused = LoadStoredOptions(arguments.settings_file, options)) return refused;
  if (arguments.settings.empty()) return CheckFixedFolder(options);
  OptionDraft draft(options);
  for (const std::string& setting : arguments.settings) {
    if (auto refused = SetOption(draft, setting)) return refused;
  }
  if (auto refused = draft.Check()) return refused;
  draft.Accept(options);
  return CheckFixedFolder(options);
}

std::optional<std::string> ChooseCharset(const std::string& charset, OptionRecord& options) {
  if (charset == "none") {
    options.CharsetCode.clear();
  } else if (charset == "auto") {
    options.CharsetCode = kFullAuto;
  } else if (charset == "sure") {
    options.CharsetCode = kSureAuto;
  } else if (!charset.empty()) {
    options.CharsetCode = charset;
  }
  const std::string& chosen = options.CharsetCode;
  const bool is_judged = chosen.empty() || chosen == kFullAuto || chosen == kSureAuto;
  if (is_judged || IsCharsetAvailable(chosen)) return std::nullopt;
  return "ご使用の環境では " + chosen + " の文字コードは使用できません";
}

}  // namespace ledrix
