#include "app/console_arguments.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string_view>

#include "app/console_completion.h"
#include "app/console_help.h"
#include "platform/native_path.h"
#include "platform/version.h"

namespace ledrix {
namespace {

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

// Takes nothing but the values; the description lists them for BashCompletion.
void TakeOneOf(CLI::Option& option, const std::vector<std::string>& values) {
  option.description(CLI::detail::join(values, " "));
  option.check([values](const std::string& text) {
    const bool is_one = std::find(values.begin(), values.end(), text) != values.end();
    return is_one ? std::string()
                  : CLI::detail::join(values, "、") + " のいずれかを指定してください";
  });
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
  AddText(command, "--charset", arguments->charset)
      ->description(
          "none auto sure _autodetect Shift_JIS EUC-JP ISO-2022-JP UTF-8 UTF-16LE UTF-16BE UTF-7");
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

// "N", "N-M" or "N-", up to the last one.
std::string ReadBlocks(const std::string& text, ViewArguments& arguments) {
  const size_t dash = text.find('-');
  std::string last = dash == std::string::npos ? text : text.substr(dash + 1);
  if (last.empty()) last = std::to_string(std::numeric_limits<int64_t>::max());
  const auto read = [](const std::string& digits, int64_t& number) {
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return error == std::errc() && end == digits.data() + digits.size() && number > 0;
  };
  const bool is_good = read(text.substr(0, dash), arguments.first_block) &&
                       read(last, arguments.last_block) &&
                       arguments.first_block <= arguments.last_block;
  return is_good ? std::string() : "--blocks には N、N-M または N- を指定してください";
}

void AddView(CLI::App& app, ConsoleArguments& parsed) {
  const auto arguments = std::make_shared<ViewArguments>();
  CLI::App& command = AddCommand(app, "view", parsed, arguments);
  command.add_option("LISTING", arguments->path)->required();
  TakeOneOf(*AddText(command, "--color", arguments->color), {"auto", "always", "never"});
  TakeOneOf(*AddText(command, "--side", arguments->side), {"old", "new"});
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
  TakeOneOf(*AddText(dircomp_command, "--range", dircomp->range), {"full", "current", "none"});
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

// The command that a line is about, if any.
std::string CommandOf(int argc, char** argv) {
  const auto names = CommandNames();
  for (int i = 1; i < argc; ++i) {
    if (std::find(names.begin(), names.end(), argv[i]) != names.end()) return argv[i];
  }
  return {};
}

// What the parser says in front of its own words: the name of an argument.
std::string NameIn(const CLI::ParseError& error) {
  const std::string text = error.what();
  return text.substr(0, text.find_first_of(": "));
}

std::optional<ConsoleExit> Parse(CLI::App& app, int argc, char** argv) {
  try {
    app.parse(argc, argv);
  } catch (const CLI::RequiredError& error) {
    return Refuse("引数が足りません: " + NameIn(error));
  } catch (const CLI::ArgumentMismatch& error) {
    return Refuse("引数に誤りが有ります: " + NameIn(error) + " の値がありません");
  } catch (const CLI::RequiresError& error) {
    return Refuse("引数に誤りが有ります: " + NameIn(error) +
                  " は --evidence と共に指定してください");
  } catch (const CLI::ParseError& error) {
    return Refuse("引数に誤りが有ります: " + std::string(error.what()));
  }
  return std::nullopt;
}

// An argument that nothing takes: a command or an option that is misspelt, or one too many.
ConsoleExit RefuseExtra(const CLI::App& app, const std::string& extra) {
  const std::string shown = PathToUtf8(NativePath(extra));
  const auto commands = app.get_subcommands();
  if (commands.empty())
    return Refuse("不明なコマンドです: " + shown + DidYouMean(extra, CommandNames()));
  std::vector<std::string> names;
  for (const CLI::App* const known : {&app, static_cast<const CLI::App*>(commands.front())}) {
    for (const CLI::Option* const option : known->get_options())
      names.push_back(option->get_name());
  }
  const std::vector<std::string_view> views(names.begin(), names.end());
  const bool is_option = extra.starts_with("-");
  return Refuse("不明な引数です: " + shown + (is_option ? DidYouMean(extra, views) : ""));
}

}  // namespace

std::variant<ConsoleArguments, ConsoleExit> ParseConsoleArguments(int argc, char** argv) {
  ConsoleArguments arguments;
  CLI::App app;
  app.set_help_flag();
  bool help = false;
  bool version = false;
  bool options = false;
  bool completion = false;
  app.add_flag("-h,--help", help)->trigger_on_parse();
  app.add_flag("--version", version);
  app.add_flag("--help-options", options);
  app.add_flag("--bash-completion", completion);
  app.require_subcommand(0, 1);
  app.allow_extras();
  AddCommon(app, arguments.common);
  AddCompare(app, arguments);
  AddView(app, arguments);
  AddOthers(app, arguments);

  if (const auto refused = Parse(app, argc, argv); refused && !help) return *refused;
  const auto* const judge = std::get_if<JudgeArguments>(&arguments.command);
  if (judge != nullptr && judge->pair && (!judge->why || judge->paths.size() != 2)) {
    return Refuse("--pair には --why と二つのファイルを指定してください");
  }
  if (help) return ConsoleExit{CommandHelpText(CommandOf(argc, argv)), 0};
  if (options) return ConsoleExit{OptionListText(), 0};
  if (completion) return ConsoleExit{BashCompletion(app), 0};
  if (version) return ConsoleExit{std::string("ledrixc ") + ProgramVersion(), 0};
  std::vector<std::string> extras = app.remaining(true);
  // The parser hands on the mark that ends the options.
  extras.erase(std::remove(extras.begin(), extras.end(), "--"), extras.end());
  if (!extras.empty()) return RefuseExtra(app, extras.front());
  if (app.get_subcommands().empty()) return Refuse("コマンドが指定されていません");
  arguments.common.command_line = "ledrixc";
  for (int i = 1; i < argc; ++i) arguments.common.command_line += " " + std::string(argv[i]);
  return arguments;
}

}  // namespace ledrix
