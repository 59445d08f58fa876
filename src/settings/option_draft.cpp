#include "settings/option_draft.h"

#include <array>

#include "platform/files.h"
#include "text/ascii.h"
#include "text/leading_number.h"

namespace ledrix {
namespace {

// One check: the key it looks at, how, and what the user is told.
struct OptionCheck {
  enum class Rule {
    kRange,          // the leading number lies in the field's valid range
    kNotBelowStart,  // the last column is not below the first
    kNotEverything,  // not "*.*"
    kHasStar,        // contains "*"
    kNotEmpty,       // not empty after trimming
    kSomeDetail,     // one of the three detail flags is on
  };
  OptionKey key;
  Rule rule;
  const char* message;
};

using Rule = OptionCheck::Rule;

// In the order in which they are made.
constexpr std::array<OptionCheck, 16> kChecks = {{
    {"OptSTCol", Rule::kRange, "ﾃｷｽﾄｺﾝﾍﾟｱ：比較範囲（開始）に誤りが有ります（1～9999桁）"},
    {"OptEDCol", Rule::kRange, "ﾃｷｽﾄｺﾝﾍﾟｱ：比較範囲（終了）に誤りが有ります（1～9999桁）"},
    {"OptEDCol", Rule::kNotBelowStart, "ﾃｷｽﾄｺﾝﾍﾟｱ：比較範囲（開始／終了）に誤りが有ります"},
    {"OptMatch", Rule::kRange, "ﾃｷｽﾄｺﾝﾍﾟｱ：一致条件に誤りが有ります（1～99行）"},
    {"OptBuff", Rule::kRange, "ﾃｷｽﾄｺﾝﾍﾟｱ：先読み行数に誤りが有ります（1～4000行）"},
    {"NoPattern", Rule::kNotEverything, "ﾃｷｽﾄｺﾝﾍﾟｱ：対象外ﾌｧｲﾙﾀｲﾌﾟに全て(*.*)は指定できません"},
    {"OptLstout", Rule::kRange, "ﾃｷｽﾄｺﾝﾍﾟｱ：出力幅（縦）に誤りが有ります（1～99行）"},
    {"PrintCompLen", Rule::kRange, "ﾃｷｽﾄｺﾝﾍﾟｱ：出力幅（横）に誤りが有ります（70～300桁）"},
    {"OptTABtoKETA", Rule::kRange, "ﾃｷｽﾄｺﾝﾍﾟｱ：TAB桁数に誤りが有ります（1～16桁）"},
    {"ComboLstLst", Rule::kHasStar,
     "ﾃｷｽﾄｺﾝﾍﾟｱ：結果ﾌｧｲﾙ拡張子に誤りが有ります（*文字がありません）"},
    {"ComboCSVName", Rule::kNotEmpty, "同時出力：CSVﾌｧｲﾙ名称が未設定です"},
    {"ComboLstSbn", Rule::kHasStar,
     "同時出力：差分ﾌｧｲﾙ拡張子に誤りが有ります（*文字がありません）"},
    {"PrintDCompLen", Rule::kRange, "ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱ：出力幅に誤りが有ります（70～300桁）"},
    {"DCompOut0", Rule::kSomeDetail, "ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱ：出力内容制限の設定に誤りが有ります"},
    {"ComboDLst", Rule::kHasStar, "ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱ：ﾌｧｲﾙ拡張子に誤りが有ります（*文字がありません）"},
    {"ComboStp", Rule::kHasStar, "ｽﾃｯﾌﾟｶｳﾝﾄ：出力ﾌｧｲﾙ拡張子に誤りが有ります（*文字がありません）"},
}};

bool InRange(const OptionDraft& draft, OptionKey key) {
  const OptionField& field = FieldOf(key);
  const double value = LeadingNumber(draft.Text(key));
  return value >= field.lowest && value <= field.highest;
}

bool IsOn(const OptionDraft& draft, OptionKey key) {
  return LeadingInteger(draft.Text(key)) != 0;
}

bool Passes(const OptionDraft& draft, const OptionCheck& check) {
  const std::string& text = draft.Text(check.key);
  switch (check.rule) {
    case Rule::kRange:
      return InRange(draft, check.key);
    case Rule::kNotBelowStart:
      return LeadingNumber(text) >= LeadingNumber(draft.Text("OptSTCol"));
    case Rule::kNotEverything:
      return Trimmed(text) != "*.*";
    case Rule::kHasStar:
      return text.find('*') != std::string::npos;
    case Rule::kNotEmpty:
      return !Trimmed(text).empty();
    case Rule::kSomeDetail:
      return IsOn(draft, "DCompOut0") || IsOn(draft, "DCompOut1") || IsOn(draft, "DCompOut2");
  }
  return false;
}

// A flag or a choice has no text field in which anything else could be typed; the font size comes
// from a chooser.
bool IsValue(const OptionField& field, std::string_view text) {
  if (field.kind == OptionKind::kText) return true;
  if (field.kind == OptionKind::kInteger) {
    return field.key != "FontSize" || LeadingNumber(text) >= field.lowest;
  }
  return text.size() == 1 && text[0] >= '0' + field.lowest && text[0] <= '0' + field.highest;
}

}  // namespace

bool IsFixedFolder(const std::string& folder) {
  // With its separator the empty text would be the root.
  return !Trimmed(folder).empty() && IsFolder(AddBackslash(NativePath(folder)));
}

OptionDraft::OptionDraft(const OptionRecord& record) {
  for (const OptionField& field : OptionFields()) {
    Put(field.key, field.GetClamped(record));
  }
}

std::optional<std::string> OptionDraft::Set(std::string_view key, std::string_view text) {
  const OptionField* field = FindOptionField(key);
  if (field == nullptr) return "ｵﾌﾟｼｮﾝ " + std::string(key) + " は有りません";
  if (!IsValue(*field, text)) {
    return "ｵﾌﾟｼｮﾝ " + std::string(key) + " の値に誤りが有ります（" + std::string(text) + "）";
  }
  Put(field->key, text);
  return std::nullopt;
}

std::optional<std::string> OptionDraft::Check(std::optional<OptionKey>* failed_key) const {
  std::optional<OptionKey> unwanted;
  std::optional<OptionKey>& key = failed_key != nullptr ? *failed_key : unwanted;
  for (const OptionCheck& check : kChecks) {
    if (Passes(*this, check)) continue;
    key = check.key;
    return check.message;
  }
  return CheckUserFileTypes(key);
}

std::optional<std::string> OptionDraft::CheckUserFileTypes(
    std::optional<OptionKey>& failed_key) const {
  for (size_t k = 0; k < kUserFileTypes; ++k) {
    const bool has_title = !Trimmed(Text(kTitleKeys[k])).empty();
    const bool has_pattern = !Trimmed(Text(kPatternKeys[k])).empty();
    if (has_title == has_pattern) continue;
    failed_key = (has_title ? kPatternKeys : kTitleKeys)[k];
    return std::string("画面制御：ﾕｰｻﾞ設定 ﾌｧｲﾙﾀｲﾌﾟ ｵﾌﾟｼｮﾝ に誤りが有ります\r") +
           (has_title ? "（ﾊﾟﾀｰﾝ未設定)  " : "（ﾀｲﾄﾙ未設定)  ") + std::to_string(k + 1) + " 番目";
  }
  return std::nullopt;
}

void OptionDraft::Accept(OptionRecord& record) const {
  for (const OptionField& field : OptionFields()) field.Set(record, Text(field.key));
  record.NoPattern = std::string(Trimmed(record.NoPattern));
  AcceptUserFileTypes(record);
}

void OptionDraft::AcceptUserFileTypes(OptionRecord& record) const {
  size_t used = 0;
  for (size_t k = 0; k < kUserFileTypes; ++k) {
    std::string title(Trimmed(Text(kTitleKeys[k])));
    std::string pattern(Trimmed(Text(kPatternKeys[k])));
    if (title.empty() || pattern.empty()) continue;
    record.FPatternTtl[used] = std::move(title);
    record.FPattern[used] = std::move(pattern);
    ++used;
  }
  for (; used < kUserFileTypes; ++used) {
    record.FPatternTtl[used].clear();
    record.FPattern[used].clear();
  }
}

}  // namespace ledrix
