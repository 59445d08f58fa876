#include "jobs/run_loop.h"

#include <cmath>
#include <cstdio>
#include <optional>

#include "compare/pair_driver.h"
#include "dircomp/dir_compare.h"
#include "dircomp/dir_info_file.h"
#include "dircomp/dir_listing.h"
#include "jobs/evidence_job.h"
#include "jobs/output_names.h"
#include "platform/fixed_width.h"
#include "platform/output_guard.h"
#include "stepcount/step_jobs.h"
#include "text/name_pattern.h"

namespace ledrix {
namespace {

bool IsMultiple(const JobRequest& request) {
  return request.IsMultiple || request.FileCount != 1;
}

// Opening the summary empties it, so it must be none of the files that the job reads and writes.
bool CsvSummaryIsSafe(RunServices& services, const NativePath& path) {
  const JobFiles& files = services.job().files;
  const Status refused =
      RefuseOutput(path, {files.OldPath, files.NewPath},
                   {files.OutPath, files.SbnPath, files.MrgPath}, services.job().ProtectedFiles);
  if (refused.ok()) return true;
  services.platform().ShowMessage(
      {DescribeError(refused.error()) + "\r\n" + PathToUtf8(path), "CSV File Open Error"});
  services.NoteEnd(JobEnd::kTrouble);
  return false;
}

bool StartCsvSummary(RunServices& services) {
  const NativePath path = services.CsvSummaryPath(services.job().files.OutPath);
  return CsvSummaryIsSafe(services, path) && services.OpenCsvSummary(path);
}

void RunSingleCompare(RunServices& services) {
  JobRecord& job = services.job();
  static_cast<OutputNames&>(job.files) = MakeSingleOutputNames(services.options(), job);
  if (!job.outputs.OptCsvList) {
    modComp::ComparePair(services);
  } else if (StartCsvSummary(services)) {
    modComp::ComparePair(services);
    services.CloseCsvSummary(job.request.FileCount);
  }
}

// The pairs of a multiple compare: every selected old file with its namesake of the new side.
class MultipleCompare {
 public:
  MultipleCompare(RunServices& services, const FileSides& sides)
      : services_(services),
        job_(services.job()),
        sides_(sides),
        old_folder_(DirOf(job_.request.OldPath)),
        new_folder_(DirOf(job_.request.NewPath)) {}

  void Run() {
    Pair();
    for (const auto& [old_name, new_name] : pairs_) {
      if (services_.IsExcludedType(old_name)) continue;
      job_.ProtectedFiles.Add(old_folder_ + old_name);
      job_.ProtectedFiles.Add(new_folder_ + new_name);
    }
    TellMeetingNames();
    size_t number = 0;
    bool ended = true;
    PairTally tally(static_cast<int64_t>(pairs_.size()));
    for (const auto& [old_name, new_name] : pairs_) {
      services_.front_end().PairStarted(++number, pairs_.size());
      const std::optional<PairEnd> end = RunPair(number, old_name, new_name);
      if (end) tally.Add(*end);
      ended = end && !job_.StopRequested;
      if (!ended) break;
    }
    services_.front_end().PairsEnded(tally);
    services_.ReportTotalLoss();
    if (!job_.outputs.OptCsvList) return;
    ended ? services_.CloseCsvSummary(job_.request.FileCount) : services_.AbandonCsvSummary();
  }

 private:
  // A name without a namesake is looked for under its own spelling.
  void Pair() {
    const FileList& new_files = sides_[Side::kNew].files;
    const NameIndex index(new_files);
    for (const FileList::Entry& entry : sides_[Side::kOld].files.entries) {
      if (!entry.selected) continue;
      const size_t found = index.Find(entry.name);
      pairs_.emplace_back(entry.name,
                          found == std::string::npos ? entry.name : new_files.entries[found].name);
    }
  }

  // Two names can map to one listing; the later pair will fail.
  void TellMeetingNames() {
    OutputClaims claims;
    size_t meeting = 0;
    for (const auto& [old_name, new_name] : pairs_) {
      if (services_.IsExcludedType(old_name)) continue;
      const OutputNames names = MakeOutputNames(services_.options(), job_.outputs,
                                                old_folder_ + old_name, new_folder_ + new_name);
      const std::vector<NativePath> outputs = {names.OutPath, names.SbnPath, names.MrgPath};
      if (claims.Refuse(outputs)) {
        ++meeting;
      } else {
        claims.Take(outputs);
      }
    }
    if (meeting == 0) return;
    services_.platform().ReportTrouble("出力ファイル名が " + std::to_string(meeting) +
                                       " 組で重なります（後の組はエラーになります）");
  }

  // Nothing when the job cannot go on.
  std::optional<PairEnd> RunPair(size_t number, const std::string& old_name,
                                 const std::string& new_name) {
    services_.SetMessage("複数コンペア （ " + std::to_string(job_.request.FileCount) +
                         " ファイル ） を実行中\r( " + std::to_string(number) + " ) " +
                         PathToUtf8(NativePath(old_name)));
    services_.platform().YieldToUi();
    job_.files.OldPath = old_folder_ + old_name;
    job_.files.NewPath = new_folder_ + new_name;
    static_cast<OutputNames&>(job_.files) =
        MakeOutputNames(services_.options(), job_.outputs, job_.files.OldPath, job_.files.NewPath);
    if (number == 1 && job_.outputs.OptCsvList && !StartCsvSummary(services_)) return std::nullopt;
    if (services_.IsExcludedType(old_name)) {
      ReportExcluded(old_name);
      return PairEnd::kExcluded;
    }
    return modComp::ComparePair(services_);
  }

  void ReportExcluded(const std::string& name) {
    const char* const text = PairEndText(PairEnd::kExcluded);
    if (JobWitness* const witness = services_.witness()) {
      PairNote note;
      note.inputs[Side::kOld].path = job_.files.OldPath;
      note.inputs[Side::kNew].path = job_.files.NewPath;
      note.end = PairEnd::kExcluded;
      witness->PairEnded(note);
    }
    services_.WriteCsvStatus({job_.files.OldPath, job_.files.NewPath}, text);
    services_.AddResultLines(job_.files.OutPath, name + text + "  ");
  }

  RunServices& services_;
  JobRecord& job_;
  const FileSides& sides_;
  const NativePath old_folder_;
  const NativePath new_folder_;
  std::vector<std::pair<std::string, std::string>> pairs_;
};

void Dispatch(RunServices& services, const FileSides& sides) {
  const JobRequest& request = services.job().request;
  switch (request.JobKind) {
    case JobKind::kComp:
      if (IsMultiple(request)) {
        MultipleCompare(services, sides).Run();
      } else {
        RunSingleCompare(services);
      }
      break;
    case JobKind::kStepCnt:
      modStep::StepCntJob(services);
      break;
    case JobKind::kStepCsv:
      modStep::StepCsvJob(services, sides[request.ActiveSide].files);
      break;
    case JobKind::kDirEdit:
      modDComp::DirEditJob(services);
      break;
    case JobKind::kDirComp:
      modDComp::DirCompJob(services, FilterPatterns(sides[Side::kOld].filter_entry));
      break;
  }
}

// Runs the job, with a record of it when that is asked for.
void RunWitnessed(RunServices& services, const FileSides& sides) {
  if (services.job().request.evidence.path.empty()) {
    Dispatch(services, sides);
    return;
  }
  EvidenceJob evidence(services, sides);
  if (!evidence.Begin()) return;
  services.SetWitness(&evidence);
  Dispatch(services, sides);
  services.SetWitness(nullptr);
  if (services.job().StopRequested) services.NoteEnd(JobEnd::kTrouble);
  evidence.Finish();
}

// Seconds since midnight, as exact as single precision is.
float Timer(const LocalTime& time) {
  return static_cast<float>(time.hour * 3600 + time.minute * 60 + time.second) +
         static_cast<float>(time.nanosecond) / 1e9F;
}

// At most seven significant digits.
std::string TimerText(float timer) {
  char text[32];
  std::snprintf(text, sizeof text, "%.7g", static_cast<double>(timer));
  return text;
}

// "#,##0.00".
std::string ElapsedText(double seconds) {
  const auto hundredths = std::llround(std::fabs(seconds) * 100);
  char fraction[8];
  std::snprintf(fraction, sizeof fraction, ".%02d", static_cast<int>(hundredths % 100));
  return (seconds < 0 && hundredths > 0 ? "-" : "") + FormatThousands(hundredths / 100) + fraction;
}

std::string DebugText(const NativePath& old_path, const LocalTime& start, const LocalTime& end) {
  const float t0 = Timer(start);
  const float t1 = Timer(end);
  const auto second_of_day = [](const LocalTime& t) {
    return t.hour * 3600 + t.minute * 60 + t.second;
  };
  return BaseNameOf(old_path) + " >> " + TimerText(t0) + " <- " +
         ElapsedText(static_cast<double>(t1) - static_cast<double>(t0)) + " -> " + TimerText(t1) +
         " ///// " + std::to_string(second_of_day(end) - second_of_day(start));
}

// Not every result says so: a count has none but 0, and between two pairs there is none.
void TellStop(RunServices& services) {
  services.NoteEnd(JobEnd::kTrouble);
  services.platform().ReportTrouble("中断しました");
}

void RecordJob(RunServices& services, RunLog& log, const LocalTime& start) {
  const JobRecord& job = services.job();
  for (const NativePath* path : {&job.request.OldPath, &job.request.NewPath, &job.files.OutPath}) {
    if (!path->empty()) log.WriteRunRecord(*path);
  }
  if (job.DebugLog)
    log.WriteDebugLog(DebugText(job.request.OldPath, start, services.platform().Now()));
  log.CompactHistory();
}

bool IsInfoFile(const NativePath& path, const OptionRecord& options) {
  return MatchesPattern(FileNameOf(path), options.ComboDLst, LetterCase::kIgnore);
}

// One side of a directory compare in the question before it.
std::string DirCompareSideText(const NativePath& path, const OptionRecord& options,
                               const char* behind_file, const char* behind_folder) {
  if (!IsInfoFile(path, options)) return PathToUtf8(path) + behind_folder;
  return PathToUtf8(NativePath(FileNameOf(path))) + behind_file;
}

std::string NameForMessage(const NativePath& path) {
  return PathToUtf8(NativePath(FileNameOf(path)));
}

}  // namespace

void RunJob(RunServices& services, const JobSurroundings& surroundings) {
  JobRecord& job = services.job();
  if (IsOn(services.options().OutListClear)) {
    services.front_end().ClearResults();
    job.RunCounter = 0;
  }
  const LocalTime start = services.platform().Now();
  services.UpdateProgress(0, 0);
  services.front_end().JobStarted();
  services.platform().YieldToUi();
  RunWitnessed(services, surroundings.sides);
  if (job.StopRequested) TellStop(services);
  if (surroundings.log != nullptr) RecordJob(services, *surroundings.log, start);
  services.front_end().JobEnded();
}

NativePath DirCompareSide(const NativePath& path, const OptionRecord& options) {
  return IsInfoFile(path, options) ? path : DirOf(path);
}

std::string JobCaption(const JobRequest& request) {
  switch (request.JobKind) {
    case JobKind::kComp:
      return request.FileCount > 1 ? "Ledrix  < MultiSelect Compare >" : "Ledrix  < Compare >";
    case JobKind::kStepCnt:
      return "Ledrix  < StepCount >";
    case JobKind::kStepCsv:
      return "Ledrix  < StepCount CSV Mode >";
    case JobKind::kDirEdit:
      return "Ledrix  < Directory Compare Edit > ";
    case JobKind::kDirComp:
      return std::string("Ledrix  < Directory Compare ") +
             modDComp::RangeText(request.CompareRange) + " > ";
  }
  return {};
}

std::string JobMessage(const OptionRecord& options, const JobRecord& job) {
  const JobRequest& request = job.request;
  switch (request.JobKind) {
    case JobKind::kComp:
      if (request.FileCount >= 2) {
        return "複数コンペア （ " + std::to_string(request.FileCount) + " ファイル ） を開始します";
      }
      return NameForMessage(request.OldPath) + " と " + NameForMessage(request.NewPath) +
             " を判定し\r" + NameForMessage(MakeSingleOutputNames(options, job).OutPath) +
             " に出力します";
    case JobKind::kStepCnt:
      return "ステップカウントを開始実行します\r( " + PathToUtf8(request.OldPath) + " )";
    case JobKind::kStepCsv:
      return "ステップカウント(CSV)を行い " + NameForMessage(request.OutPath) + " に出力します\r(" +
             PathToUtf8(request.OldPath) + ")\r" + std::to_string(request.FileCount) + " File";
    case JobKind::kDirEdit:
      return PathToUtf8(request.OldPath) + " の情報を\r" + PathToUtf8(request.OutPath) +
             " に出力します";
    case JobKind::kDirComp:
      return DirCompareSideText(request.OldPath, options, " ﾃﾞｨﾚｸﾄﾘ情報ﾌｧｲﾙと ", " と") +
             DirCompareSideText(request.NewPath, options, " ﾃﾞｨﾚｸﾄﾘ情報ﾌｧｲﾙを比較し", " を比較し") +
             "\r" + NameForMessage(request.OutPath) + " に出力します";
  }
  return {};
}

}  // namespace ledrix
