#include "jobs/evidence_job.h"

#include <cerrno>
#include <ctime>

#include "platform/files.h"
#include "platform/replacement.h"
#include "platform/version.h"
#include "settings/compare_options.h"

namespace ledrix {
namespace {

// "yyyy-mm-dd hh:mm:ss +hhmm", with the nanoseconds before the zone where they are wanted.
std::string ZonedText(const timespec& time, bool with_fraction) {
  tm local{};
  localtime_r(&time.tv_sec, &local);
  char text[64];
  strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local);
  std::string zoned = text;
  if (with_fraction) {
    const std::string digits = std::to_string(time.tv_nsec);
    zoned += "." + std::string(9 - digits.size(), '0') + digits;
  }
  strftime(text, sizeof text, " %z", &local);
  return zoned + text;
}

std::string NowText() {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  return ZonedText(now, false);
}

const char* KindWord(JobKind kind) {
  switch (kind) {
    case JobKind::kComp:
      return "テキスト比較";
    case JobKind::kDirEdit:
      return "ﾃﾞｨﾚｸﾄﾘ情報作成";
    case JobKind::kDirComp:
      return "ﾃﾞｨﾚｸﾄﾘ比較";
    case JobKind::kStepCnt:
    case JobKind::kStepCsv:
      break;
  }
  return "ステップカウント";
}

const char* RangeWord(CompareRange range) {
  if (range == CompareRange::kFullPath) return "full";
  return range == CompareRange::kNoPath ? "none" : "current";
}

const char* KindWord(FileKind kind) {
  switch (kind) {
    case FileKind::kRegular:
      return "ファイル";
    case FileKind::kPipe:
      return "パイプ";
    default:
      return "その他";
  }
}

// What sha256sum reads: a name with a backslash, CR or LF is escaped and its line marked.
std::string SumLine(const std::string& path, const std::string& sha256) {
  std::string name;
  for (const char c : path) {
    if (c == '\\') {
      name += "\\\\";
    } else if (c == '\n') {
      name += "\\n";
    } else if (c == '\r') {
      name += "\\r";
    } else {
      name += c;
    }
  }
  return (name == path ? "" : "\\") + sha256 + "  " + name + "\n";
}

}  // namespace

bool EvidenceJob::Begin() {
  const EvidenceRequest& request = services_.job().request.evidence;
  if (!request.sums_path.empty() && GetFileInfo(request.sums_path).ok()) {
    Fail(request.sums_path, Error::System(EEXIST));
    return false;
  }
  if (request.sums_path == request.path) {
    Fail(request.sums_path, Error{ErrorKind::kOutputTwice});
    return false;
  }
  Result<RecordWriter> begun = RecordWriter::Begin(request.path);
  if (!begun.ok()) {
    Fail(request.path, begun.error());
    return false;
  }
  writer_.emplace(std::move(begun.value()));
  WriteHead();
  WriteOptions();
  return true;
}

void EvidenceJob::WriteHead() {
  const JobRequest& request = services_.job().request;
  writer_->Line("プログラム", std::string("Ledrix ") + ProgramVersion());
  writer_->Line("開始", NowText());
  writer_->Line("指示", request.evidence.command);
  if (!request.evidence.signed_by.empty()) writer_->Line("署名", request.evidence.signed_by);
  if (!request.evidence.sums_path.empty()) {
    writer_->Line("ハッシュ一覧", request.evidence.sums_path.bytes());
  }
  writer_->Line("種類", KindWord(request.JobKind));
  writer_->Line("旧", request.OldPath.bytes());
  if (!request.NewPath.empty()) writer_->Line("新", request.NewPath.bytes());
  if (request.JobKind != JobKind::kDirComp) return;
  writer_->Line("比較範囲", RangeWord(request.CompareRange));
  writer_->Line("対象", sides_[Side::kOld].filter_entry);
}

void EvidenceJob::WriteOptions() {
  const JobKind kind = services_.job().request.JobKind;
  const bool is_compare = kind == JobKind::kComp;
  const size_t first = is_compare ? OptionKey("OptSTCol").index() : OptionKey("ComboDLst").index();
  const size_t last = is_compare ? OptionKey("MergeOld").index() : OptionKey("DCompBinary").index();
  writer_->Section("条件");
  for (size_t i = first; i <= last; ++i) {
    const OptionField& field = *FindOptionField(kOptionKeys[i]);
    // The last column is never before the first.
    writer_->Line(field.key.text(),
                  field.key == OptionKey("OptEDCol")
                      ? std::to_string(CompareOptions(services_.options()).last_column)
                      : field.GetClamped(services_.options()));
  }
  if (!is_compare) return;
  const OutputChoices& outputs = services_.job().outputs;
  writer_->Line("CharsetCode", services_.options().CharsetCode);
  writer_->Line("差分ﾌｧｲﾙ", int64_t{outputs.OptSbnList});
  writer_->Line("CSV", int64_t{outputs.OptCsvList});
  writer_->Line("ﾏｰｼﾞｿｰｽ", int64_t{outputs.OptMrgSrc});
  writer_->Line("印", int64_t{outputs.MergeMarks});
}

void EvidenceJob::PairEnded(const PairNote& pair) {
  ++ends_[static_cast<size_t>(pair.end)];
  writer_->Section("組 " + std::to_string(++pairs_));
  WriteInput("旧", pair.inputs[Side::kOld]);
  WriteInput("新", pair.inputs[Side::kNew]);
  if (pair.has_run_time) writer_->Line("出力日時", FormatDateTime(pair.run_time));
  writer_->Line("結果", EndWord(pair.end));
  if (pair.end == PairEnd::kChanged || pair.end == PairEnd::kUnchanged) WriteCounts(pair);
  for (const OutputNote& output : pair.outputs) WriteOutput(output);
}

void EvidenceJob::WriteInput(const std::string& side, const InputNote& input) {
  writer_->Line(side, input.path.bytes());
  if (!input.shown.path.empty()) writer_->Line(side + " 表示", input.shown.path.bytes());
  if (!input.shown.stamp.empty()) writer_->Line(side + " 日時", input.shown.stamp);
  if (input.sha256.empty()) return;
  writer_->Line(side + " 種別", KindWord(input.kind));
  writer_->Line(side + " 大きさ", std::to_string(input.size));
  writer_->Line(side + " 更新", ZonedText(input.modified, true));
  writer_->Line(side + " SHA-256", input.sha256);
  if (input.kind == FileKind::kRegular) AddSum(input.path, input.sha256);
  if (input.charset.empty()) return;
  writer_->Line(side + " 文字コード", input.charset);
  writer_->Line(side + " 判定", input.found_by);
  writer_->Line(side + " ? にした文字", std::to_string(input.lost));
}

void EvidenceJob::WriteCounts(const PairNote& pair) {
  const CompareCounts& counts = pair.counts;
  const std::pair<const char*, int64_t> lines[] = {
      {"旧 行数", counts.old_lines}, {"新 行数", counts.new_lines},
      {"変更", counts.changed},      {"追加", counts.added},
      {"削除", counts.deleted},      {"規則だけで一致", pair.by_rule.lines}};
  for (const auto& [name, number] : lines) writer_->Line(name, number);
  if (pair.by_rule.lines == 0) return;
  for (const Side side : kBothSides) {
    std::string numbers;
    for (const int64_t line : pair.by_rule.first_lines[side]) {
      numbers += (numbers.empty() ? "" : " ") + std::to_string(line);
    }
    writer_->Line(side == Side::kOld ? "規則だけで一致 旧の行" : "規則だけで一致 新の行", numbers);
  }
  for (size_t i = 0; i < kEqualityRules; ++i) {
    writer_->Line("なければ相違 " + std::string(RuleWord(static_cast<EqualityRule>(i))),
                  pair.by_rule.without[i]);
  }
}

void EvidenceJob::WriteOutput(const OutputNote& output) {
  writer_->Line(output.kind, output.path.bytes());
  writer_->Line(output.kind + " 大きさ", std::to_string(output.size));
  writer_->Line(output.kind + " SHA-256", output.sha256);
  AddSum(output.path, output.sha256);
}

void EvidenceJob::OutputWritten(const OutputNote& output) {
  outputs_.push_back(output);
}

void EvidenceJob::ClockShown(const LocalTime& time) {
  clock_ = time;
}

void EvidenceJob::EntriesTaken(Side side, const EntriesNote& entries) {
  writer_->Section(side == Side::kOld ? "旧ﾃﾞｨﾚｸﾄﾘ" : "新ﾃﾞｨﾚｸﾄﾘ");
  writer_->Line("パス", entries.path.bytes());
  writer_->Line("種別", entries.is_file ? "ﾃﾞｨﾚｸﾄﾘ情報ﾌｧｲﾙ" : "フォルダ");
  writer_->Line("件数", std::to_string(entries.entries));
  writer_->Line("SHA-256", entries.sha256);
  if (entries.is_file) AddSum(entries.path, entries.sha256);
}

// Names that are no pair of a multiple compare.
void EvidenceJob::WriteLeftOut() {
  const JobRequest& request = services_.job().request;
  const bool is_multiple = request.IsMultiple || request.FileCount != 1;
  if (request.JobKind != JobKind::kComp || !is_multiple) return;
  writer_->Section("対象外");
  for (const Side side : kBothSides) {
    const std::string name = side == Side::kOld ? "旧" : "新";
    const NameIndex others(sides_[OtherSide(side)].files);
    for (const FileList::Entry& entry : sides_[side].files.entries) {
      const bool is_single = others.Find(entry.name) == std::string::npos;
      if (entry.selected && side == Side::kOld) continue;
      if (entry.selected && !is_single) continue;
      const NativePath path = AddBackslash(sides_[side].folder) + entry.name;
      writer_->Line(name + (is_single ? " 相手なし" : " 選択なし"), path.bytes());
    }
    if (request.subfolders[side] >= 0) {
      writer_->Line(name + " サブフォルダ", request.subfolders[side]);
    }
  }
  const int64_t unreached = request.FileCount - pairs_;
  if (unreached > 0) writer_->Line("未処理の組", unreached);
}

void EvidenceJob::Finish() {
  WriteLeftOut();
  if (!outputs_.empty()) {
    writer_->Section("出力");
    if (clock_) writer_->Line("出力日時", FormatDateTime(*clock_));
    for (const OutputNote& output : outputs_) WriteOutput(output);
  }
  // The record tells how the job ended, so nothing may fail behind it but the record itself.
  const EvidenceRequest& request = services_.job().request.evidence;
  const Status sums = WriteSums();
  if (!sums.ok()) Fail(request.sums_path, sums.error());
  writer_->Section("末尾");
  if (!sums.ok()) writer_->Line("ハッシュ一覧", "出力できません");
  writer_->Line("終了", NowText());
  writer_->Line("終了ステータス", static_cast<int64_t>(services_.end()));
  writer_->Line("組", pairs_);
  for (size_t i = 0; i < ends_.size(); ++i) {
    writer_->Line(EndWord(static_cast<PairEnd>(i)), ends_[i]);
  }
  if (const Status failed = writer_->Finish(); !failed.ok()) {
    Fail(request.path, failed.error());
    // Sums of a job without a record prove nothing.
    if (sums.ok() && !request.sums_path.empty()) RemoveFile(request.sums_path).Ignore();
    return;
  }
  services_.AddResultLines(request.path, "証跡");
}

void EvidenceJob::AddSum(const NativePath& path, const std::string& sha256) {
  if (!services_.job().request.evidence.sums_path.empty()) sums_[path.bytes()] = sha256;
}

Status EvidenceJob::WriteSums() const {
  const NativePath& path = services_.job().request.evidence.sums_path;
  if (path.empty()) return {};
  std::string text;
  for (const auto& [name, sha256] : sums_) text += SumLine(name, sha256);
  Result<Replacement> file = Replacement::Begin(path, Replacement::Mode::kOfNewFiles);
  if (!file.ok()) return file.error();
  const Status failed = WriteAll(file.value().descriptor(), text);
  return failed.ok() ? file.value().Commit(true, Replacement::Place::kFree) : failed;
}

void EvidenceJob::Fail(const NativePath& path, const Error& error) {
  services_.platform().ShowMessage(
      {"証跡を出力できません。\r\n" + PathToUtf8(path) + ": " + DescribeError(error)});
  services_.NoteEnd(JobEnd::kTrouble);
}

NativePath FreeRecordPath(const NativePath& folder, const LocalTime& now) {
  std::string digits;
  for (const char c : FormatDateTime(now)) {
    if (c >= '0' && c <= '9') digits += c;
  }
  const std::string stem = "LEDRIX_" + digits.substr(0, 8) + "_" + digits.substr(8);
  for (int number = 1;; ++number) {
    const std::string behind = number == 1 ? "" : "_" + std::to_string(number);
    NativePath path = AddBackslash(folder) + (stem + behind + ".EVD.TXT");
    if (!GetFileInfo(path).ok()) return path;
  }
}

}  // namespace ledrix
