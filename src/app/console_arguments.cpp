#include "app/console_arguments.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>

#include "platform/native_path.h"

namespace ledrix {
namespace {

constexpr const char* kHelp =
    R"(使い方: ledrixc compare OLD NEW [オプション]
        ledrixc judge FILE...

  compare OLD NEW   旧ファイル OLD と新ファイル NEW を比較し、結果ﾘｽﾄを出力します
  judge FILE...     ファイルの文字コードを判定します（- は標準入力）

compare のオプション:
  --out FILE|FOLDER 結果ﾘｽﾄのファイル、または出力先のフォルダ
                    （指定なしの場合は旧ファイルのフォルダ）
  --sbn             差分ﾌｧｲﾙも出力します
  --csv             CSV形式の一覧も出力します
  --mrg             ﾏｰｼﾞｿｰｽも出力します
  --marks           ﾏｰｼﾞｿｰｽの各行に出所の印を付けます
  --charset NAME    文字コード（none 無変換、auto 判定、または文字コード名）

共通のオプション:
  --set KEY=VALUE   オプションを設定します（何度でも指定できます）
  --settings FILE   保存されている設定の代わりに FILE の設定を使います
  --settings none   保存されている設定を使わず、全て既定値にします
  --quiet           結果を標準出力に表示しません
  --progress        端末に進行状況を表示します
  --                以降をオプションとして扱いません
  --help            この説明を表示します
  --version         バージョンを表示します

終了ステータス: 0 相違なし  1 相違あり  2 エラーまたは中断)";

ConsoleExit Refuse(const std::string& reason) {
  return {"ledrixc: " + reason + "（使い方は ledrixc --help）", 2};
}

CLI::Validator NotEmpty() {
  return CLI::Validator(
      [](const std::string& text) { return text.empty() ? std::string("値が空です") : std::string(); },
      "");
}

CLI::App* AddCompare(CLI::App& app, CompareArguments& arguments) {
  CLI::App* compare = app.add_subcommand("compare");
  compare->fallthrough()->set_help_flag();
  compare->add_option("OLD", arguments.old_path)->required();
  compare->add_option("NEW", arguments.new_path)->required();
  compare->add_option("--out", arguments.out)->take_last()->check(NotEmpty());
  compare->add_option("--charset", arguments.charset)->take_last()->check(NotEmpty());
  compare->add_flag("--sbn", arguments.difference_file);
  compare->add_flag("--csv", arguments.csv);
  compare->add_flag("--mrg", arguments.merge_source);
  compare->add_flag("--marks", arguments.marks);
  return compare;
}

CLI::App* AddJudge(CLI::App& app, JudgeArguments& arguments) {
  CLI::App* judge = app.add_subcommand("judge");
  judge->fallthrough()->set_help_flag();
  judge->add_option("FILE", arguments.paths)->required();
  return judge;
}

void AddCommon(CLI::App& app, CommonArguments& arguments) {
  app.add_option("--set", arguments.settings)->allow_extra_args(false);
  app.add_option("--settings", arguments.settings_file)->take_last()->check(NotEmpty());
  app.add_flag("--quiet", arguments.quiet);
  app.add_flag("--progress", arguments.progress);
}

}  // namespace

std::variant<ConsoleArguments, ConsoleExit> ParseConsoleArguments(int argc, char** argv) {
  ConsoleArguments arguments;
  CLI::App app;
  app.set_help_flag();
  bool help = false;
  bool version = false;
  app.add_flag("-h,--help", help)->trigger_on_parse();
  app.add_flag("--version", version);
  app.require_subcommand(0, 1);
  app.allow_extras();
  AddCommon(app, arguments.common);
  CompareArguments compare;
  JudgeArguments judge;
  AddCompare(app, compare);
  const CLI::App* const judge_command = AddJudge(app, judge);

  try {
    app.parse(argc, argv);
  } catch (const CLI::RequiredError&) {
    if (!help) return Refuse("引数が足りません");
  } catch (const CLI::ParseError& error) {
    return Refuse("引数に誤りが有ります: " + std::string(error.what()));
  }
  if (help) return ConsoleExit{kHelp, 0};
  if (version) return ConsoleExit{"ledrixc " LEDRIX_VERSION, 0};
  std::vector<std::string> extras = app.remaining(true);
  // The parser hands on the mark that ends the options.
  extras.erase(std::remove(extras.begin(), extras.end(), "--"), extras.end());
  if (!extras.empty()) return Refuse("不明な引数です: " + PathToUtf8(NativePath(extras.front())));
  if (app.get_subcommands().empty()) return Refuse("コマンドが指定されていません");
  if (judge_command->parsed()) {
    arguments.command = judge;
  } else {
    arguments.command = compare;
  }
  return arguments;
}

}  // namespace ledrix
