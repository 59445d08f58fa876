#include "app/console_arguments.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <memory>

#include "platform/native_path.h"
#include "settings/help_texts.h"
#include "settings/option_record.h"

namespace ledrix {
namespace {

constexpr const char* kHelp =
    R"(使い方: ledrixc compare OLD NEW [オプション]
        ledrixc steps FILE|FOLDER [--out FILE]
        ledrixc snapshot FOLDER --out FILE
        ledrixc dircomp OLD NEW --out FILE [オプション]
        ledrixc judge [--why [--pair]] FILE...
        ledrixc verify [オプション] RECORD...
        ledrixc view [オプション] LISTING|-

  compare OLD NEW   旧ファイル OLD と新ファイル NEW を比較し、結果ﾘｽﾄを出力します
                    （フォルダ同士の場合は同じ名前のファイルを全て比較します。
                    片方を - とすると標準入力を読みます）
  steps             行数を数えます（フォルダの場合は CSV 形式で出力します）
  snapshot FOLDER   ﾃﾞｨﾚｸﾄﾘ情報ﾌｧｲﾙを作成します
  dircomp OLD NEW   フォルダまたはﾃﾞｨﾚｸﾄﾘ情報ﾌｧｲﾙを比較します
  judge FILE...     ファイルの文字コードを判定します（- は標準入力）
  verify RECORD...  証跡を検証します（記録、入力、出力、再実行の結果）
  view LISTING      結果ﾘｽﾄを端末に表示します（- は標準入力、他のテキストも表示できます）

compare のオプション:
  --out FILE|FOLDER 結果ﾘｽﾄのファイル、または出力先のフォルダ
                    （指定なしの場合は旧ファイルのフォルダ）
  --sbn             差分ﾌｧｲﾙも出力します
  --csv             CSV形式の一覧も出力します
  --mrg             ﾏｰｼﾞｿｰｽも出力します
  --marks           ﾏｰｼﾞｿｰｽの各行に出所の印を付けます
  --charset NAME    文字コード（none 無変換、auto 先頭から判定、sure 全体から判定、
                    または文字コード名）

  --view            比較の後、結果ﾘｽﾄを端末に表示します
  --label-old TEXT  出力に表示する旧ファイルの名称（パスの代わり）
  --label-new TEXT  出力に表示する新ファイルの名称

view のオプション:
  --color WHEN      色を付けるかどうか（auto 端末の場合だけ、always、never）
  --side SIDE       片側だけを表示します（old 旧、new 新）
  --blocks N-M      N 番目から M 番目までのブロックだけを表示します

compare、snapshot、compare、dircomp のオプション:
  --no-history      実行履歴に記録しません

dircomp のオプション:
  --evidence FILE   実行の証跡を FILE に出力します（既にあるファイルには出力しません）
  --sums FILE       証跡のハッシュ値を sha256sum -c の形式でも出力します
  --signed-by TEXT  証跡に責任者などの文言を記載します

verify のオプション:
  --root OLD=NEW    証跡のパスの先頭 OLD を NEW に読み替えます（何度でも指定できます）
  --no-rerun        再実行による確認を省きます

judge のオプション:
  --why             全てのバイトから判定し、判定の方法と根拠も表示します
                    （タブ区切りで、文字コード、方法、ファイル、根拠）
  --pair            --why と共に、二つのファイルを組として判定します

dircomp のオプション:
  --range RANGE     比較範囲（full フルパス、current カレントパス、none パスなし）
  --types PATTERNS  対象の名称（例 "*.CBL;*.COB"）

共通のオプション:
  --set KEY=VALUE   オプションを設定します（何度でも指定できます）
  --help-options    --set で設定できるオプションを全て表示します
  --settings FILE   保存されている設定の代わりに FILE の設定を使います
  --settings none   保存されている設定を使わず、全て既定値にします
  --quiet           結果を標準出力に表示しません
  --progress        端末に進行状況を表示します
  --                以降をオプションとして扱いません
  --help            この説明を表示します
  --version         バージョンを表示します

終了ステータス: 0 相違なし  1 相違あり  2 エラーまたは中断)";

// What --set takes: each key with its values, its default and what it does.
std::string OptionList() {
  std::string list;
  for (const OptionField& field : OptionFields()) {
    const bool is_text = field.kind == OptionKind::kText;
    const bool is_unbounded = field.highest == std::numeric_limits<int16_t>::max();
    const std::string range =
        is_text ? std::string("文字列")
                : std::to_string(field.lowest) + "～" +
                      (is_unbounded ? std::string() : std::to_string(field.highest));
    list += std::string(field.key.text()) + "  " + range + "（既定値 " +
            (is_text ? "\"" + std::string(field.default_text) + "\""
                     : std::string(field.default_text)) +
            "）\n    " + std::string(OptionHelp(field.key).text) + "\n";
  }
  list.pop_back();
  return list;
}

ConsoleExit Refuse(const std::string& reason) {
  return {"ledrixc: " + reason + "（使い方は ledrixc --help）", 2};
}

CLI::Validator NotEmpty() {
  return CLI::Validator(
      [](const std::string& text) {
        return text.empty() ? std::string("値が空です") : std::string();
      },
      "");
}

CLI::Option* AddText(CLI::App& command, const char* name, std::string& text) {
  return command.add_option(name, text)->take_last()->check(NotEmpty());
}

// A subcommand whose arguments become the command when it is given.
template <class Arguments>
CLI::App& AddCommand(CLI::App& app, const char* name, ConsoleArguments& parsed,
                     const std::shared_ptr<Arguments>& arguments) {
  CLI::App* const command = app.add_subcommand(name);
  command->fallthrough()->set_help_flag();
  command->callback([&parsed, arguments] { parsed.command = *arguments; });
  return *command;
}

void AddEvidence(CLI::App& command, EvidenceArguments& evidence) {
  CLI::Option* const path = AddText(command, "--evidence", evidence.path);
  AddText(command, "--sums", evidence.sums)->needs(path);
  AddText(command, "--signed-by", evidence.signed_by)->needs(path);
}

void AddCompare(CLI::App& app, ConsoleArguments& parsed) {
  const auto arguments = std::make_shared<CompareArguments>();
  CLI::App& command = AddCommand(app, "compare", parsed, arguments);
  command.add_option("OLD", arguments->old_path)->required();
  command.add_option("NEW", arguments->new_path)->required();
  AddText(command, "--out", arguments->out);
  AddText(command, "--charset", arguments->charset);
  command.add_flag("--sbn", arguments->difference_file);
  command.add_flag("--csv", arguments->csv);
  command.add_flag("--mrg", arguments->merge_source);
  command.add_flag("--marks", arguments->marks);
  command.add_flag("--view", arguments->view);
  AddText(command, "--label-old", arguments->label_old);
  AddText(command, "--label-new", arguments->label_new);
  command.add_flag("--no-history", arguments->no_history);
  AddEvidence(command, arguments->evidence);
}

// "N" or "N-M".
std::string ReadBlocks(const std::string& text, ViewArguments& arguments) {
  const size_t dash = text.find('-');
  const std::string last = dash == std::string::npos ? text : text.substr(dash + 1);
  const auto read = [](const std::string& digits, int64_t& number) {
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return error == std::errc() && end == digits.data() + digits.size() && number > 0;
  };
  const bool is_good =
      read(text.substr(0, dash), arguments.first_block) && read(last, arguments.last_block);
  return is_good ? std::string() : "--blocks には N または N-M を指定してください";
}

void AddView(CLI::App& app, ConsoleArguments& parsed) {
  const auto arguments = std::make_shared<ViewArguments>();
  CLI::App& command = AddCommand(app, "view", parsed, arguments);
  command.add_option("LISTING", arguments->path)->required();
  AddText(command, "--color", arguments->color)->check(CLI::IsMember({"auto", "always", "never"}));
  AddText(command, "--side", arguments->side)->check(CLI::IsMember({"old", "new"}));
  command.add_option_function<std::string>("--blocks", [arguments](const std::string& text) {
    const std::string wrong = ReadBlocks(text, *arguments);
    if (!wrong.empty()) throw CLI::ValidationError(wrong);
  });
}

void AddOthers(CLI::App& app, ConsoleArguments& parsed) {
  const auto steps = std::make_shared<StepsArguments>();
  CLI::App& steps_command = AddCommand(app, "steps", parsed, steps);
  steps_command.add_option("PATH", steps->path)->required();
  AddText(steps_command, "--out", steps->out);

  const auto snapshot = std::make_shared<SnapshotArguments>();
  CLI::App& snapshot_command = AddCommand(app, "snapshot", parsed, snapshot);
  snapshot_command.add_option("FOLDER", snapshot->folder)->required();
  AddText(snapshot_command, "--out", snapshot->out)->required();
  AddEvidence(snapshot_command, snapshot->evidence);

  const auto dircomp = std::make_shared<DirCompArguments>();
  CLI::App& dircomp_command = AddCommand(app, "dircomp", parsed, dircomp);
  dircomp_command.add_option("OLD", dircomp->old_path)->required();
  dircomp_command.add_option("NEW", dircomp->new_path)->required();
  AddText(dircomp_command, "--out", dircomp->out)->required();
  AddText(dircomp_command, "--range", dircomp->range)
      ->check(CLI::IsMember({"full", "current", "none"}));
  AddText(dircomp_command, "--types", dircomp->types);
  dircomp_command.add_flag("--no-history", dircomp->no_history);
  AddEvidence(dircomp_command, dircomp->evidence);

  const auto judge = std::make_shared<JudgeArguments>();
  CLI::App& judge_command = AddCommand(app, "judge", parsed, judge);
  judge_command.add_option("FILE", judge->paths)->required();
  judge_command.add_flag("--why", judge->why);
  judge_command.add_flag("--pair", judge->pair);

  const auto verify = std::make_shared<VerifyArguments>();
  CLI::App& verify_command = AddCommand(app, "verify", parsed, verify);
  verify_command.add_option("RECORD", verify->records)->required();
  verify_command.add_option("--root", verify->roots)->allow_extra_args(false)->check(NotEmpty());
  verify_command.add_flag("--no-rerun", verify->no_rerun);
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
  bool options = false;
  app.add_flag("-h,--help", help)->trigger_on_parse();
  app.add_flag("--version", version);
  app.add_flag("--help-options", options);
  app.require_subcommand(0, 1);
  app.allow_extras();
  AddCommon(app, arguments.common);
  AddCompare(app, arguments);
  AddView(app, arguments);
  AddOthers(app, arguments);

  try {
    app.parse(argc, argv);
  } catch (const CLI::RequiredError&) {
    if (!help) return Refuse("引数が足りません");
  } catch (const CLI::ParseError& error) {
    return Refuse("引数に誤りが有ります: " + std::string(error.what()));
  }
  const auto* const judge = std::get_if<JudgeArguments>(&arguments.command);
  if (judge != nullptr && judge->pair && (!judge->why || judge->paths.size() != 2)) {
    return Refuse("--pair には --why と二つのファイルを指定してください");
  }
  if (help) return ConsoleExit{kHelp, 0};
  if (options) return ConsoleExit{OptionList(), 0};
  if (version) return ConsoleExit{"ledrixc " LEDRIX_VERSION, 0};
  std::vector<std::string> extras = app.remaining(true);
  // The parser hands on the mark that ends the options.
  extras.erase(std::remove(extras.begin(), extras.end(), "--"), extras.end());
  if (!extras.empty()) return Refuse("不明な引数です: " + PathToUtf8(NativePath(extras.front())));
  if (app.get_subcommands().empty()) return Refuse("コマンドが指定されていません");
  arguments.common.command_line = "ledrixc";
  for (int i = 1; i < argc; ++i) arguments.common.command_line += " " + std::string(argv[i]);
  return arguments;
}

}  // namespace ledrix
