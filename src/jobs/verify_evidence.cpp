#include "jobs/verify_evidence.h"

#include <algorithm>
#include <array>
#include <optional>

#include "compare/pair_driver.h"
#include "dircomp/dir_compare.h"
#include "dircomp/dir_info_file.h"
#include "evidence/record.h"
#include "jobs/file_sides.h"
#include "jobs/rerun_job.h"
#include "platform/files.h"
#include "platform/scratch_folder.h"
#include "platform/temporary_copy.h"

namespace ledrix {
namespace {

constexpr const char* kSame = "一致";
constexpr const char* kChanged = "変更あり";
constexpr const char* kGone = "なし";
constexpr const char* kUnknown = "確認不可";  // nothing stays of it

// Kinds of jobs.
constexpr const char* kSnapshot = "ﾃﾞｨﾚｸﾄﾘ情報作成";
constexpr const char* kDirectoryCompare = "ﾃﾞｨﾚｸﾄﾘ比較";
constexpr const char* kOutputKinds[] = {"結果ﾘｽﾄ", "差分ﾌｧｲﾙ", "ﾏｰｼﾞｿｰｽ", "CSV", "出力"};

bool IsPair(const RecordSection& section) {
  return section.title.starts_with("組 ");
}

std::optional<LocalTime> ClockOf(const RecordSection& section) {
  return ParseDateTime(section.Text("出力日時"));
}

// One record on its way through the verification.
class RecordCheck {
 public:
  RecordCheck(const NativePath& path, const VerifyRequest& request, PlatformServices& platform,
              const std::function<bool()>& stopped, const VerifyReport& report)
      : path_(path), request_(request), platform_(platform), stopped_(stopped), report_(report) {}

  JobEnd Run() {
    if (Read()) Check();
    if (stopped_()) Trouble(path_, "中断しました");
    return end_;
  }

 private:
  bool Read();
  void Check();
  void CheckTotals();
  void CheckPairInputs(const RecordSection& pair);
  void CheckInput(const RecordSection& pair, const std::string& side);
  void TellUnrecorded(const NativePath& recorded);
  void CheckOutputs(const RecordSection& section);
  void CheckFile(const char* what, const NativePath& recorded, const std::string& sha256);

  bool LoadOptions(RerunJob& rerun);
  std::optional<ScratchFolder> Prepare(RerunJob& rerun);
  void RerunPairs();
  bool RerunPair(RerunJob& rerun, const RecordSection& pair, const NativePath& folder);
  void WriteCsvRow(RerunJob& rerun, const RecordSection& pair, PairEnd end);
  const RecordSection* TreeOf(Side side) const;
  void BeginDirectories(RerunJob& rerun, const NativePath& folder);
  void TellTree(const RecordSection& tree, const std::optional<EntriesNote>& note);
  void CheckDirectories();
  void RerunDirectories();
  void TellRerun(bool same, const std::string& path);

  NativePath Mapped(const NativePath& recorded) const;
  void Line(const char* what, const char* found, const NativePath& path) {
    report_.line(std::string(what) + "\t" + found + "\t" + PathToUtf8(path));
  }
  void Note(JobEnd end) { end_ = std::max(end_, end); }
  void Trouble(const NativePath& path, const std::string& why) {
    report_.trouble(PathToUtf8(path) + ": " + why);
    Note(JobEnd::kTrouble);
  }

  const NativePath& path_;
  const VerifyRequest& request_;
  PlatformServices& platform_;
  const std::function<bool()>& stopped_;
  const VerifyReport& report_;
  EvidenceRecord record_;
  JobEnd end_ = JobEnd::kNoDifference;
  bool inputs_match_ = true;
};

bool RecordCheck::Read() {
  const Result<std::string> bytes = ReadWholeFile(path_);
  if (!bytes.ok()) {
    Trouble(path_, DescribeError(bytes.error()));
    return false;
  }
  std::variant<EvidenceRecord, RecordFault> read = ReadRecord(bytes.value());
  if (auto* const record = std::get_if<EvidenceRecord>(&read)) {
    record_ = std::move(*record);
    Line("記録", "無改変", path_);
    return true;
  }
  switch (std::get<RecordFault>(read)) {
    case RecordFault::kAltered:
      Line("記録", "改変あり", path_);
      Note(JobEnd::kDifference);
      break;
    case RecordFault::kNewer:
      Trouble(path_, "新しい Ledrix の証跡（版 " +
                         std::to_string(RecordVersion(bytes.value()).value_or(0)) +
                         "）なので、この版では検証できません");
      break;
    case RecordFault::kNone:
      Trouble(path_, "Ledrix の証跡ではありません");
      break;
  }
  return false;
}

void RecordCheck::Check() {
  CheckTotals();
  for (const RecordSection& section : record_.sections) {
    if (IsPair(section)) CheckPairInputs(section);
  }
  const std::string& kind = record_.head().Text("種類");
  if (kind != kSnapshot && kind != kDirectoryCompare) {
    for (const RecordSection& section : record_.sections) CheckOutputs(section);
    if (inputs_match_ && request_.reruns && !stopped_()) RerunPairs();
  } else {
    CheckDirectories();
  }
}

// A directory job that failed has taken the entries of no side, or of one.
void RecordCheck::CheckDirectories() {
  bool are_recorded = true;
  for (const Side side : kBothSides) {
    const std::string* const path = record_.head().Find(side == Side::kOld ? "旧" : "新");
    const bool is_needed = side == Side::kOld || record_.head().Text("種類") == kDirectoryCompare;
    if (!is_needed || TreeOf(side) != nullptr) continue;
    are_recorded = false;
    TellUnrecorded(NativePath(path == nullptr ? std::string() : *path));
  }
  if (are_recorded) RerunDirectories();
}

// The totals at the end must be those of the pairs.
void RecordCheck::CheckTotals() {
  const RecordSection* const foot = record_.Find("末尾");
  int64_t pairs = 0;
  std::array<int64_t, 6> ends{};
  bool are_true = foot != nullptr;
  for (const RecordSection& section : record_.sections) {
    if (!IsPair(section)) continue;
    are_true = are_true && section.title == "組 " + std::to_string(++pairs);
    const std::optional<PairEnd> end = EndOfWord(section.Text("結果"));
    are_true = are_true && end.has_value();
    if (end) ++ends[static_cast<size_t>(*end)];
  }
  are_true = are_true && foot->Text("組") == std::to_string(pairs);
  for (size_t i = 0; are_true && i < ends.size(); ++i) {
    are_true = foot->Text(EndWord(static_cast<PairEnd>(i))) == std::to_string(ends[i]);
  }
  if (are_true) return;
  Line("集計", "不一致", path_);
  Note(JobEnd::kDifference);
}

NativePath RecordCheck::Mapped(const NativePath& recorded) const {
  const std::string& path = recorded.bytes();
  NativePath mapped = recorded;
  size_t longest = 0;
  for (const auto& [from, to] : request_.roots) {
    const std::string old_root = StripBackslash(from).bytes();
    const bool is_below = path.starts_with(old_root) &&
                          (path.size() == old_root.size() || path[old_root.size()] == '/');
    if (!is_below || old_root.size() < longest) continue;
    longest = old_root.size();
    mapped = StripBackslash(to) + path.substr(old_root.size());
  }
  return mapped;
}

void RecordCheck::CheckPairInputs(const RecordSection& pair) {
  for (const char* side : {"旧", "新"}) {
    if (!stopped_()) CheckInput(pair, side);
  }
}

// Of an input of a job that failed there is no digest, so nobody can say that it is as it was.
void RecordCheck::TellUnrecorded(const NativePath& recorded) {
  Line("入力", "記録なし", recorded);
  Note(JobEnd::kTrouble);
}

void RecordCheck::CheckInput(const RecordSection& pair, const std::string& side) {
  const std::string* const path = pair.Find(side);
  const std::string* const sha256 = pair.Find(side + " SHA-256");
  if (path == nullptr) return;
  const NativePath recorded(*path);
  if (sha256 == nullptr) {
    if (pair.Text("結果") != EndWord(PairEnd::kExcluded)) TellUnrecorded(recorded);
  } else if (pair.Text(side + " 種別") == "ファイル") {
    CheckFile("入力", recorded, *sha256);
  } else {
    // Nothing of it is left to be looked at, so nobody can say that it is as it was.
    inputs_match_ = false;
    Line("入力", kUnknown, recorded);
    Note(JobEnd::kTrouble);
  }
}

void RecordCheck::CheckOutputs(const RecordSection& section) {
  for (const char* kind : kOutputKinds) {
    const std::string* const path = section.Find(kind);
    const std::string* const sha256 = section.Find(std::string(kind) + " SHA-256");
    if (path == nullptr || sha256 == nullptr || stopped_()) continue;
    const bool matched = inputs_match_;
    CheckFile("出力", NativePath(*path), *sha256);
    inputs_match_ = matched;
  }
}

void RecordCheck::CheckFile(const char* what, const NativePath& recorded,
                            const std::string& sha256) {
  const NativePath path = Mapped(recorded);
  const Result<FileInfo> info = GetFileInfo(path);
  const char* found = kSame;
  if (!info.ok() && info.error().IsMissing()) {
    found = kGone;
  } else if (!info.ok()) {
    Trouble(path, DescribeError(info.error()));
    found = nullptr;
  } else if (IsDevice(info.value())) {
    found = kUnknown;
  } else if (info.value().kind != FileKind::kRegular) {
    found = kChanged;
  } else {
    Sha256 hash;
    Result<InputFile> file = InputFile::OpenRegular(path);
    Status unread = file.status();
    if (unread.ok()) {
      platform_.YieldBetweenBlocks(file.value());
      file.value().HashInto(hash);
      std::vector<char> block(size_t{1} << 18);
      while (!stopped_()) {
        const Result<size_t> size = file.value().Read(block.data(), block.size());
        unread = size.status();
        if (!size.ok() || size.value() == 0) break;
      }
      unread.KeepFirst(CheckUnchanged(path, file.value().info()));
    }
    if (!unread.ok()) Trouble(path, DescribeError(unread.error()));
    found = !unread.ok() ? nullptr : hash.Digest() == sha256 ? kSame : kChanged;
  }
  if (found != kSame) inputs_match_ = false;
  if (found == nullptr || stopped_()) return;
  Line(what, found, path);
  if (found == kChanged || found == kGone) Note(JobEnd::kDifference);
  if (found == kUnknown) Note(JobEnd::kTrouble);
}

void RecordCheck::TellRerun(bool same, const std::string& path) {
  Line("再現", same ? kSame : "不一致", NativePath(path));
  if (!same) Note(JobEnd::kDifference);
}

// Puts the recorded options into a job; false, and told, when one of them is unknown.
bool RecordCheck::LoadOptions(RerunJob& rerun) {
  const RecordSection* const conditions = record_.Find("条件");
  if (conditions == nullptr) {
    Trouble(path_, "条件が記録されていません");
    return false;
  }
  OutputChoices& outputs = rerun.job.outputs;
  const std::pair<std::string_view, bool*> choices[] = {{"差分ﾌｧｲﾙ", &outputs.OptSbnList},
                                                        {"CSV", &outputs.OptCsvList},
                                                        {"ﾏｰｼﾞｿｰｽ", &outputs.OptMrgSrc},
                                                        {"印", &outputs.MergeMarks}};
  for (const auto& line : conditions->lines) {
    const auto& [name, value] = line;
    const auto* const choice = std::find_if(std::begin(choices), std::end(choices),
                                            [&](const auto& c) { return c.first == line.first; });
    const OptionField* const field = FindOptionField(name);
    if (choice != std::end(choices)) {
      *choice->second = value == "1";
    } else if (field != nullptr) {
      field->Set(rerun.options, value);
    } else {
      Trouble(path_, "この版にないオプションが記録されています: " + PathToUtf8(NativePath(name)));
      return false;
    }
  }
  // Which pairs were left out is known; the others are compared whatever their files' times.
  rerun.options.OptNoCngNoOut = 0;
  return true;
}

// The recorded options and a folder for the outputs; nothing, and told, when either fails.
std::optional<ScratchFolder> RecordCheck::Prepare(RerunJob& rerun) {
  if (!LoadOptions(rerun)) return std::nullopt;
  Result<ScratchFolder> scratch = ScratchFolder::Make();
  if (scratch.ok()) return std::move(scratch.value());
  Trouble(TemporaryFolder(), DescribeError(scratch.error()));
  return std::nullopt;
}

void RecordCheck::RerunPairs() {
  RerunJob rerun(platform_, stopped_, report_.trouble);
  const std::optional<ScratchFolder> scratch = Prepare(rerun);
  if (!scratch) return;
  const NativePath folder = scratch->path();
  const RecordSection* const outputs = record_.Find("出力");
  const std::string* const csv = outputs == nullptr ? nullptr : outputs->Find("CSV");
  BeginJob(rerun.job, {});
  if (csv != nullptr && !rerun.services.OpenCsvSummary(folder + "csv")) return;
  for (const RecordSection& section : record_.sections) {
    if (stopped_()) return;
    const std::optional<PairEnd> end = EndOfWord(section.Text("結果"));
    if (!IsPair(section) || !end) continue;
    if (*end == PairEnd::kChanged || *end == PairEnd::kUnchanged) {
      TellRerun(RerunPair(rerun, section, folder), section.Text("旧"));
    } else {
      WriteCsvRow(rerun, section, *end);
    }
  }
  if (csv == nullptr) return;
  rerun.services.AbandonCsvSummary();
  const std::vector<OutputNote>& written = rerun.witness.outputs;
  TellRerun(!written.empty() && written.back().sha256 == outputs->Text("CSV SHA-256"), *csv);
}

// A pair that was not compared has a row all the same.
void RecordCheck::WriteCsvRow(RerunJob& rerun, const RecordSection& pair, PairEnd end) {
  const auto shown = [&](const std::string& side) {
    const std::string* const path = pair.Find(side + " 表示");
    return NativePath(path != nullptr ? *path : pair.Text(side));
  };
  rerun.services.WriteCsvStatus({shown("旧"), shown("新")}, PairEndText(end));
}

bool RecordCheck::RerunPair(RerunJob& rerun, const RecordSection& pair, const NativePath& folder) {
  JobRecord& job = rerun.job;
  job.rerun.emplace();
  job.claims = {};
  job.files.OldPath = Mapped(NativePath(pair.Text("旧")));
  job.files.NewPath = Mapped(NativePath(pair.Text("新")));
  job.files.OutPath = folder + "listing";
  job.files.SbnPath = job.outputs.OptSbnList ? folder + "difference" : NativePath();
  job.files.MrgPath = job.outputs.OptMrgSrc ? folder + "merge" : NativePath();
  job.rerun->shown[Side::kOld] = {NativePath(pair.Text("旧 表示")), pair.Text("旧 日時")};
  job.rerun->shown[Side::kNew] = {NativePath(pair.Text("新 表示")), pair.Text("新 日時")};
  rerun.platform.now = ClockOf(pair).value_or(LocalTime());
  rerun.witness.pair.reset();
  modComp::ComparePair(rerun.services);
  if (!rerun.witness.pair) return false;
  const PairNote& note = *rerun.witness.pair;
  const std::pair<const char*, int64_t> numbers[] = {
      {"旧 行数", note.counts.old_lines}, {"新 行数", note.counts.new_lines},
      {"変更", note.counts.changed},      {"追加", note.counts.added},
      {"削除", note.counts.deleted},      {"規則だけで一致", note.by_rule.lines}};
  bool same = pair.Text("結果") == EndWord(note.end);
  for (const auto& [name, number] : numbers) {
    same = same && pair.Text(name) == std::to_string(number);
  }
  size_t recorded = 0;
  for (const char* kind : kOutputKinds) recorded += pair.Find(kind) != nullptr ? 1 : 0;
  same = same && recorded == note.outputs.size();
  for (const OutputNote& output : note.outputs) {
    same = same && pair.Text(output.kind + " SHA-256") == output.sha256;
    RemoveFile(output.path).Ignore();
  }
  return same;
}

const RecordSection* RecordCheck::TreeOf(Side side) const {
  return record_.Find(side == Side::kOld ? "旧ﾃﾞｨﾚｸﾄﾘ" : "新ﾃﾞｨﾚｸﾄﾘ");
}

// The recorded job, on the files as they are found.
void RecordCheck::BeginDirectories(RerunJob& rerun, const NativePath& folder) {
  const RecordSection& head = record_.head();
  const std::string range = head.Text("比較範囲");
  JobRequest request;
  request.JobKind = head.Text("種類") == kSnapshot ? JobKind::kDirEdit : JobKind::kDirComp;
  request.CompareRange = CompareRange::kCurrentPath;
  if (range == "full") request.CompareRange = CompareRange::kFullPath;
  if (range == "none") request.CompareRange = CompareRange::kNoPath;
  request.OutPath = folder + "listing";
  PerSide<NativePath> recorded;
  for (const Side side : kBothSides) {
    const RecordSection* const tree = TreeOf(side);
    if (tree != nullptr) recorded[side] = NativePath(tree->Text("パス"));
  }
  request.OldPath = Mapped(recorded[Side::kOld]);
  request.NewPath = Mapped(recorded[Side::kNew]);
  BeginJob(rerun.job, std::move(request));
  Rerun& shown = rerun.job.rerun.emplace();
  for (const Side side : kBothSides) shown.shown[side].path = recorded[side];
  shown.no_entries.Add(path_);
  shown.no_entries.Add(Mapped(NativePath(head.Text("ハッシュ一覧"))));
  const RecordSection* const outputs = record_.Find("出力");
  if (outputs == nullptr) return;
  rerun.platform.now = ClockOf(*outputs).value_or(LocalTime());
  shown.no_entries.Add(Mapped(NativePath(outputs->Text("出力"))));
}

// A directory information file is looked at as a file. The entries of a folder are those that the
// job has taken again; without them nobody can say anything of a folder that is there.
void RecordCheck::TellTree(const RecordSection& tree, const std::optional<EntriesNote>& note) {
  const NativePath recorded(tree.Text("パス"));
  if (tree.Text("種別") != "フォルダ") return CheckFile("入力", recorded, tree.Text("SHA-256"));
  const NativePath path = Mapped(recorded);
  const bool is_same = note && note->sha256 == tree.Text("SHA-256");
  const bool is_gone = !note && !GetFileInfo(path).ok();
  Line("入力", is_same ? kSame : is_gone ? kGone : note ? kChanged : kUnknown, path);
  if (is_same) return;
  Note(note || is_gone ? JobEnd::kDifference : JobEnd::kTrouble);
  inputs_match_ = false;
}

// A tree is compared by taking its entries again, so its job is run before its inputs are told.
void RecordCheck::RerunDirectories() {
  RerunJob rerun(platform_, stopped_, report_.trouble);
  const std::optional<ScratchFolder> scratch = Prepare(rerun);
  if (!scratch) return;
  BeginDirectories(rerun, scratch->path());
  if (rerun.job.request.JobKind == JobKind::kDirEdit) {
    modDComp::DirEditJob(rerun.services);
  } else {
    modDComp::DirCompJob(rerun.services, FilterPatterns(record_.head().Text("対象")));
  }
  if (stopped_()) return;
  for (const Side side : kBothSides) {
    if (const RecordSection* const tree = TreeOf(side)) {
      TellTree(*tree, rerun.witness.entries[side]);
    }
  }
  const RecordSection* const outputs = record_.Find("出力");
  if (outputs == nullptr) return;
  CheckOutputs(*outputs);
  if (!inputs_match_ || !request_.reruns) return;
  const std::vector<OutputNote>& written = rerun.witness.outputs;
  TellRerun(!written.empty() && written.back().sha256 == outputs->Text("出力 SHA-256"),
            outputs->Text("出力"));
}

}  // namespace

JobEnd VerifyEvidence(const VerifyRequest& request, PlatformServices& platform,
                      const std::function<bool()>& stopped, const VerifyReport& report) {
  JobEnd end = JobEnd::kNoDifference;
  for (const NativePath& path : request.records) {
    if (stopped()) break;
    end = std::max(end, RecordCheck(path, request, platform, stopped, report).Run());
  }
  return end;
}

}  // namespace ledrix
