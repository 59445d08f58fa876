#include "app/console_help.h"

#include <algorithm>
#include <vector>

#include "app/wrapped_text.h"
#include "settings/help_texts.h"
#include "settings/manual.h"
#include "settings/option_record.h"
#include "text/ascii.h"

namespace ledrix {
namespace {

// An entry of commands.md:
//
//   usages, a line each, indented by four spaces
//   summary, one line
//   "- `OPTION`: text" for each option
//   "例:"
//   example, indented by four spaces
//
// Entries of shared options have the list and, in front of it, whose they are. What else stands in
// an entry is for the manual alone.
struct CommandHelp {
  std::string_view name;
  std::string_view usages;
  std::string_view summary;
  std::string_view options;
  std::string_view example;

  bool is_command() const { return usages.starts_with("    ledrixc "); }
};

constexpr std::string_view kEvidence = "証跡";
constexpr std::string_view kCommon = "共通";
constexpr std::string_view kStatus = "終了ステータス";
constexpr size_t kTextColumn = 20;  // where the texts of options begin, from 0
constexpr size_t kWidth = 80;

CommandHelp ReadCommand(const ManualEntry& entry) {
  CommandHelp help{.name = entry.name, .usages = {}, .summary = {}, .options = {}, .example = {}};
  for (const std::string_view block : entry.blocks) {
    if (block.starts_with("    ")) {
      (help.usages.empty() ? help.usages : help.example) = block;
    } else if (block.starts_with("- ")) {
      help.options = block;
    } else if (help.summary.empty()) {
      help.summary = block;
    }
  }
  return help;
}

const std::vector<CommandHelp>& Commands() {
  static const std::vector<CommandHelp> kCommands = [] {
    std::vector<CommandHelp> commands;
    for (const ManualEntry& entry : ReadManual(kManualCommands))
      commands.push_back(ReadCommand(entry));
    return commands;
  }();
  return kCommands;
}

const CommandHelp& Named(std::string_view name) {
  static constexpr CommandHelp kNone{};
  for (const CommandHelp& help : Commands()) {
    if (help.name == name) return help;
  }
  return kNone;
}

std::string WithoutMarks(std::string_view text) {
  std::string plain(text);
  std::erase(plain, '`');
  return plain;
}

// What is said of `verify` alone.
std::string WithoutVerify(std::string text) {
  constexpr std::string_view kBegins = "（verify";
  constexpr std::string_view kEnds = "）";
  for (size_t begin = text.find(kBegins); begin != std::string::npos; begin = text.find(kBegins))
    text.erase(begin, text.find(kEnds, begin) + kEnds.size() - begin);
  return text;
}

// A label at column 2, counted from 0, and its text behind it or, when that is too near, below.
std::string Item(std::string_view label, std::string_view text) {
  const size_t end = 2 + ColumnsOf(label);
  const std::string gap = end < kTextColumn ? std::string(kTextColumn - end, ' ')
                                            : "\n" + std::string(kTextColumn, ' ');
  return "  " + std::string(label) + gap + WrapText(WithoutMarks(text), kTextColumn, kWidth);
}

std::string Usages(const CommandHelp& help, std::string_view before) {
  std::string usages;
  for (std::string_view rest = help.usages; !rest.empty(); before = "        ")
    usages += std::string(before) + std::string(TakeLine(rest).substr(4)) + "\n";
  return usages;
}

std::string Options(const std::string& title, const CommandHelp& help) {
  std::string options = "\n" + title + ":\n";
  for (std::string_view rest = help.options; !rest.empty();) {
    constexpr std::string_view kBegins = "- `";
    constexpr std::string_view kTextBegins = "`: ";
    const std::string_view line = TakeLine(rest);
    const size_t end = line.find(kTextBegins);
    options += Item(line.substr(kBegins.size(), end - kBegins.size()),
                    line.substr(end + kTextBegins.size()));
  }
  return options;
}

std::string OptionsOf(const CommandHelp& help) {
  return Options(std::string(help.name) + " のオプション", help);
}

// Those that a command shares with others.
std::string SharedOptions(bool has_evidence) {
  std::string shared;
  const CommandHelp& evidence = Named(kEvidence);
  if (has_evidence)
    shared +=
        Options(std::string(evidence.summary.substr(0, evidence.summary.find("です"))), evidence);
  return shared + Options("共通のオプション", Named(kCommon));
}

std::string WholeHelp() {
  std::string usages;
  std::string summaries;
  std::string options;
  for (const CommandHelp& help : Commands()) {
    if (!help.is_command()) continue;
    usages += Usages(help, usages.empty() ? "使い方: " : "        ");
    summaries += Item(help.name, help.summary);
    options += OptionsOf(help);
  }
  return usages + "\n" + summaries + options + SharedOptions(true) +
         Options(std::string(kStatus), Named(kStatus));
}

std::string WithoutLastLineEnd(std::string text) {
  text.pop_back();
  return text;
}

// Single letters put in, left out or replaced to get from one to the other, letter case aside.
size_t EditDistance(std::string_view a, std::string_view b) {
  std::vector<size_t> row(b.size() + 1);
  for (size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (size_t i = 1; i <= a.size(); ++i) {
    size_t diagonal = row[0];
    row[0] = i;
    for (size_t j = 1; j <= b.size(); ++j) {
      const bool is_same = AsciiLower(a[i - 1]) == AsciiLower(b[j - 1]);
      const size_t replaced = diagonal + (is_same ? 0 : 1);
      diagonal = row[j];
      row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
    }
  }
  return row[b.size()];
}

}  // namespace

std::span<const std::string_view> CommandNames() {
  static const std::vector<std::string_view> kNames = [] {
    std::vector<std::string_view> names;
    for (const CommandHelp& help : Commands()) {
      if (help.is_command()) names.push_back(help.name);
    }
    return names;
  }();
  return kNames;
}

std::string CommandHelpText(std::string_view command) {
  const CommandHelp& help = Named(command);
  if (!help.is_command()) return WithoutLastLineEnd(WholeHelp());
  const bool has_evidence = Named(kEvidence).summary.find(command) != std::string_view::npos;
  std::string statuses = Options(std::string(kStatus), Named(kStatus));
  if (command != "verify") statuses = WithoutVerify(std::move(statuses));
  return Usages(help, "使い方: ") + "\n  " + WrapText(WithoutMarks(help.summary), 2, kWidth) +
         OptionsOf(help) + SharedOptions(has_evidence) +
         "\n例: " + std::string(help.example.substr(4)) + "\n" +
         WithoutLastLineEnd(std::move(statuses));
}

std::string ProgramHelpText() {
  const CommandHelp& help = Named("ledrix");
  return Usages(help, "使い方: ") + "\n  " + WrapText(WithoutMarks(help.summary), 2, kWidth) +
         Options("オプション", help) + "\n例: " + std::string(help.example.substr(4)) + "\n" +
         WithoutVerify(Options(std::string(kStatus), Named(kStatus))) +
         "\n端末やスクリプトからは ledrixc を使用してください。";
}

std::string OptionListText() {
  std::string list;
  for (const OptionField& field : OptionFields()) {
    const HelpText& help = OptionHelp(field.key);
    list += std::string(help.key) + "  " + std::string(help.values) + "\n    " +
            WrapText(help.text, 4, kWidth);
  }
  return WithoutLastLineEnd(std::move(list));
}

std::string DidYouMean(std::string_view typed, std::span<const std::string_view> names) {
  const size_t most = std::max<size_t>(typed.size() / 3, 1);
  std::string_view nearest;
  size_t distance = most + 1;
  for (const std::string_view name : names) {
    const size_t here = EditDistance(typed, name);
    if (here >= distance) continue;
    nearest = name;
    distance = here;
  }
  return nearest.empty() ? std::string() : "（" + std::string(nearest) + " ではありませんか）";
}

}  // namespace ledrix
