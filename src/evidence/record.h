// The record that proves what a job did: UTF-8, LF, made to be read by people and by ReadRecord.
//
//   record   first "\n" lines section* foot
//   first    "Ledrix 証跡 版 " number          the version of the format; this one is 1
//   section  "\n[" title "]\n" lines
//   lines    (name ": " value "\n")*           a name may come more than once
//   foot     "\n[末尾]\n" lines "SHA-256: " 64 hexadecimal digits "\n"
//
// The digest at the end is that of everything before it, from the first byte up to and with the
// space behind "SHA-256:". In a value "%", a control character and each byte that is no valid UTF-8
// are "%" and two hexadecimal digits in upper case, so that file names are exact.
//
// Sections, with the names that a reader needs (docs/evidence.md explains all of them):
//   ""           プログラム, 開始, 指示, 署名, ハッシュ一覧, 種類, 旧, 新, 比較範囲, 対象
//   条件         each option by its key, as it was used; 差分ﾌｧｲﾙ, CSV, ﾏｰｼﾞｿｰｽ, 印
//   組 N         旧, 旧 大きさ, 旧 SHA-256, 旧 表示, 旧 日時, the same of 新; 出力日時, 結果, 旧
//   行数,
//                新 行数, 変更, 追加, 削除; of each output KIND, KIND 大きさ, KIND SHA-256
//   旧ﾃﾞｨﾚｸﾄﾘ    パス, 種別, 件数, SHA-256; the same in 新ﾃﾞｨﾚｸﾄﾘ
//   対象外       names that are no pair
//   出力         outputs of the whole job, and 出力日時
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "run/job_witness.h"

namespace ledrix {

inline constexpr int kRecordVersion = 1;

// A value as it is written; what was written, or nothing when it is no value.
std::string ToRecordValue(std::string_view bytes);
std::optional<std::string> FromRecordValue(std::string_view value);

struct RecordSection {
  std::string title;
  std::vector<std::pair<std::string, std::string>> lines;  // name and value, as they were before

  // The first value of a name, or nothing.
  const std::string* Find(std::string_view name) const;
  // The same; empty when there is none.
  std::string Text(std::string_view name) const;
};

struct EvidenceRecord {
  std::vector<RecordSection> sections;  // at least the head

  const RecordSection& head() const { return sections.front(); }
  // The first section of a title, or nothing.
  const RecordSection* Find(std::string_view title) const;
};

// Why a text is no record that can be followed.
enum class RecordFault {
  kNone,     // of another tool
  kAltered,  // it is not what was written
  kNewer,    // written by a later version
};

std::variant<EvidenceRecord, RecordFault> ReadRecord(std::string_view bytes);
// The version that the first line names; nothing when it is that of no record.
std::optional<int> RecordVersion(std::string_view bytes);

// The words of a record for how a pair ended and for the rules.
const char* EndWord(PairEnd end);
std::optional<PairEnd> EndOfWord(std::string_view word);
const char* RuleWord(EqualityRule rule);

}  // namespace ledrix
