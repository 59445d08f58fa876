#include "app/console_help.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <vector>

#include "settings/help_texts.h"
#include "settings/option_record.h"
#include "text/ascii.h"

namespace ledrix {
namespace {

struct CommandHelp {
  std::string_view name;
  std::string_view usage;  // one or more lines
  std::string_view summary;
  std::string_view options;  // of its own
  bool has_evidence;
  std::string_view example;
};

constexpr CommandHelp kCommands[] = {
    {"compare", "ledrixc compare OLD NEW [オプション]",
     R"(  compare OLD NEW   旧ファイル OLD と新ファイル NEW を比較し、結果ﾘｽﾄを出力します
                    （フォルダ同士の場合は同じ名前のファイルを全て比較します。
                    ファイルの片方を - とすると標準入力を読みます）
)",
     R"(  --out FILE|FOLDER 結果ﾘｽﾄのファイル、または出力先のフォルダ
                    （指定なしの場合は旧ファイルのフォルダ）
  --sbn             差分ﾌｧｲﾙも出力します
  --csv             CSV形式の一覧も出力します
  --mrg             ﾏｰｼﾞｿｰｽも出力します
  --marks           ﾏｰｼﾞｿｰｽの各行に出所の印を付けます
  --charset NAME    文字コード（none 無変換、auto 先頭から判定、sure 全体から判定、
                    または文字コード名。指定なしの場合は保存されている設定）
  --view            比較の後、結果ﾘｽﾄを端末に表示します
  --label-old TEXT  出力に表示する旧ファイルの名称（パスの代わり）
  --label-new TEXT  出力に表示する新ファイルの名称
  --no-history      実行履歴に記録しません
)",
     true, "ledrixc compare old/KYUYO01.CBL new/KYUYO01.CBL --out listings/ --view"},
    {"steps", "ledrixc steps FILE|FOLDER [オプション]",
     "  steps             行数を数えます（フォルダの場合は CSV 形式で出力します）\n",
     R"(  --out FILE        出力するファイル（指定なしの場合はファイルの隣の 名前_拡張子_STP.TXT、
                    フォルダの中の STEP.CSV）
)",
     false, "ledrixc steps src/ --out steps.csv"},
    {"snapshot", "ledrixc snapshot FOLDER --out FILE [オプション]",
     "  snapshot FOLDER   ﾃﾞｨﾚｸﾄﾘ情報ﾌｧｲﾙを作成します\n",
     "  --out FILE        出力するﾃﾞｨﾚｸﾄﾘ情報ﾌｧｲﾙ（*.ddf）\n", true,
     "ledrixc snapshot src/ --out 2026.ddf"},
    {"dircomp", "ledrixc dircomp OLD NEW --out FILE [オプション]",
     "  dircomp OLD NEW   フォルダまたはﾃﾞｨﾚｸﾄﾘ情報ﾌｧｲﾙを比較します\n",
     R"(  --out FILE        出力する結果ﾘｽﾄ
  --range RANGE     比較範囲（full フルパス、current カレントパス、none パスなし。
                    指定なしの場合は current）
  --types PATTERNS  対象の名称（例 "*.CBL;*.COB"）
  --no-history      実行履歴に記録しません
)",
     true, "ledrixc dircomp 2025.ddf src/ --out changes.txt"},
    {"judge", "ledrixc judge [--why [--pair]] FILE...",
     "  judge FILE...     ファイルの文字コードを判定します（- は標準入力）\n",
     R"(  --why             全てのバイトから判定し、判定の方法と根拠も表示します
                    （タブ区切りで、文字コード、方法、ファイル、根拠）
  --pair            --why と共に、二つのファイルを組として判定します
)",
     false, "ledrixc judge --why --pair old/a.txt new/a.txt"},
    {"verify", "ledrixc verify [オプション] RECORD...",
     "  verify RECORD...  証跡を検証します（記録、入力、出力、再実行の結果）\n",
     R"(  --root OLD=NEW    証跡のパスの先頭 OLD を NEW に読み替えます（何度でも指定できます）
  --no-rerun        再実行による確認を省きます
)",
     false, "ledrixc verify out/kyuyo.EVD.TXT --root /src=/archive/src"},
    {"view", "ledrixc view [オプション] LISTING|-",
     "  view LISTING      結果ﾘｽﾄを端末に表示します（- は標準入力、他のテキストも表示できます）\n",
     R"(  --color WHEN      色を付けるかどうか（auto 端末の場合だけ、always、never。
                    指定なしの場合は auto）
  --side SIDE       片側だけを表示します（old 旧、new 新）
  --blocks N-M      N 番目から M 番目までのブロックだけを表示します
)",
     false, "ledrixc view --side new --blocks 3-5 KYUYO01_CBL_COMP.TXT"},
};

constexpr std::string_view kEvidence =
    R"(  --evidence FILE   実行の証跡を FILE に出力します（既にあるファイルには出力しません）
  --sums FILE       証跡のハッシュ値を sha256sum -c の形式でも出力します
  --signed-by TEXT  証跡に責任者などの文言を記載します
)";

constexpr std::string_view kCommon =
    R"(  --set KEY=VALUE   オプションを設定します（何度でも指定できます）
  --help-options    --set で設定できるオプションを全て表示します
  --settings FILE   保存されている設定の代わりに FILE の設定を使います
  --settings none   保存されている設定を使わず、全て既定値にします
  --quiet           結果を標準出力に表示しません
  --progress        端末に進行状況を表示します
  --                以降をオプションとして扱いません
  --help            この説明を表示します（コマンドの後ではそのコマンドの説明）
  --version         バージョンを表示します
)";

constexpr std::string_view kStatus = "終了ステータス: 0 相違なし  1 相違あり  2 エラーまたは中断";

std::string Section(std::string_view title, std::string_view body) {
  return "\n" + std::string(title) + " のオプション:\n" + std::string(body);
}

std::string WholeHelp() {
  std::string usages;
  std::string summaries;
  std::string options;
  std::string with_evidence;
  for (const CommandHelp& command : kCommands) {
    usages += (usages.empty() ? "使い方: " : "        ") + std::string(command.usage) + "\n";
    summaries += command.summary;
    options += Section(command.name, command.options);
    if (command.has_evidence)
      with_evidence += (with_evidence.empty() ? "" : "、") + std::string(command.name);
  }
  return usages + "\n" + summaries + options + Section(with_evidence, kEvidence) +
         "\n共通のオプション:\n" + std::string(kCommon) + "\n" + std::string(kStatus);
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
  static constexpr auto kNames = [] {
    std::array<std::string_view, std::size(kCommands)> names;
    for (size_t i = 0; i < names.size(); ++i) names[i] = kCommands[i].name;
    return names;
  }();
  return kNames;
}

std::string CommandHelpText(std::string_view command) {
  for (const CommandHelp& help : kCommands) {
    if (help.name != command) continue;
    return "使い方: " + std::string(help.usage) + "\n\n" + std::string(help.summary) +
           Section(help.name,
                   std::string(help.options) + std::string(help.has_evidence ? kEvidence : "")) +
           "\n共通のオプション:\n" + std::string(kCommon) + "\n例: " + std::string(help.example) +
           "\n" + std::string(kStatus);
  }
  return WholeHelp();
}

std::string OptionListText() {
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
