#include "jobs/run_loop.h"

#include <cmath>
#include <cstdio>

#include "compare/pair_driver.h"
#include "dircomp/dir_compare.h"
#include "dircomp/dir_info_file.h"
#include "dircomp/dir_listing.h"
#include "jobs/output_names.h"
#include "platform/fixed_width.h"
#include "platform/output_guard.h"
#include "stepcount/step_jobs.h"
#include "text/name_pattern.h"

namespace ledrix {
namespace {

bool IsMultiple(const JobRecord& job) {
  return job.IsMultiple || job.FileCount != 1;
}

// Opening the summary empties it, so it must be none of the files that the job reads and writes.
bool CsvSummaryIsSafe(RunServices& services) {
  JobRecord& job = services.job();
  const Status refused = RefuseOutput(job.CsvPath, {job.OldPath, job.NewPath},
                                      {job.OutPath, job.SbnPath, job.MrgPath}, job.ProtectedFiles);
  if (refused.ok()) return true;
  services.platform().ShowMessage(
      {DescribeError(refused.error()) + "\r\n" + PathToUtf8(job.CsvPath), "CSV File Open Error"});
  services.NoteEnd(JobEnd::kTrouble);
  return false;
}

void NameOutputs(RunServices& services) {
  JobRecord& job = services.job();
  job.OutPath = MakeOutputNames(services.options(), job, job.OldPath, job.NewPath);
  if (!job.ListingPath.empty()) job.OutPath = job.ListingPath;
}

bool StartCsvSummary(RunServices& services) {
  services.job().CsvPath = services.CsvSummaryPath(services.job().OutPath);
  return CsvSummaryIsSafe(services) && services.OpenCsvSummary();
}

void RunSingleCompare(RunServices& services) {
  JobRecord& job = services.job();
  NameOutputs(services);
  if (!job.OptCsvList) {
    modComp::ComparePair(services);
  } else if (StartCsvSummary(services)) {
    modComp::ComparePair(services);
    services.CloseCsvSummary(job.FileCount);
  }
}

// The pairs of a multiple compare: every selected old file with its namesake of the new side.
class MultipleCompare {
 public:
  MultipleCompare(RunServices& services, const FileSides& sides)
      : services_(services),
        job_(services.job()),
        sides_(sides),
        old_folder_(DirOf(job_.OldPath)),
        new_folder_(DirOf(job_.NewPath)) {}

  void Run() {
    Pair();
    for (const auto& [old_name, new_name] : pairs_) {
      job_.ProtectedFiles.Add(old_folder_ + old_name);
      job_.ProtectedFiles.Add(new_folder_ + new_name);
    }
    size_t number = 0;
    bool ended = true;
    for (const auto& [old_name, new_name] : pairs_) {
      ended = RunPair(++number, old_name, new_name) && !job_.StopRequested;
      if (!ended) break;
    }
    if (job_.StopRequested) services_.NoteEnd(JobEnd::kTrouble);
    if (!job_.OptCsvList) return;
    ended ? services_.CloseCsvSummary(job_.FileCount) : services_.AbandonCsvSummary();
  }

 private:
  // A name without a namesake is looked for under its own spelling.
  void Pair() {
    const FileList& new_files = sides_[1].files;
    const NameIndex index(new_files);
    for (const FileList::Entry& entry : sides_[0].files.entries) {
      if (!entry.selected) continue;
      const size_t found = index.Find(entry.name);
      pairs_.emplace_back(entry.name,
                          found == std::string::npos ? entry.name : new_files.entries[found].name);
    }
  }

  // False when the job cannot go on.
  bool RunPair(size_t number, const std::string& old_name, const std::string& new_name) {
    services_.SetMessage("複数コンペア （ " + std::to_string(job_.FileCount) +
                         " ファイル ） を実行中\r( " + std::to_string(number) + " ) " +
                         PathToUtf8(NativePath(old_name)));
    services_.platform().YieldToUi();
    job_.OldPath = old_folder_ + old_name;
    job_.NewPath = new_folder_ + new_name;
    NameOutputs(services_);
    if (number == 1 && job_.OptCsvList && !StartCsvSummary(services_)) return false;
    if (!services_.IsExcludedType(old_name)) modComp::ComparePair(services_);
    return true;
  }

  RunServices& services_;
  JobRecord& job_;
  const FileSides& sides_;
  const NativePath old_folder_;
  const NativePath new_folder_;
  std::vector<std::pair<std::string, std::string>> pairs_;
};

void Dispatch(RunServices& services, const FileSides& sides) {
  const JobRecord& job = services.job();
  switch (job.JobKind) {
    case JobKind::kComp:
      if (IsMultiple(job)) {
        MultipleCompare(services, sides).Run();
      } else {
        RunSingleCompare(services);
      }
      break;
    case JobKind::kStepCnt:
      modStep::StepCntJob(services);
      break;
    case JobKind::kStepCsv:
      modStep::StepCsvJob(services, sides[job.ActiveSide].files);
      break;
    case JobKind::kDirEdit:
      modDComp::DirEditJob(services);
      break;
    case JobKind::kDirComp: {
      const bool filtered = services.options().DCompSelect == 1;
      const std::string filter = filtered ? FilterPatterns(sides[0].filter_entry) : "*.*";
      modDComp::DirCompJob(services, filter);
      break;
    }
  }
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

std::string DebugText(const JobRecord& job, const LocalTime& start, const LocalTime& end) {
  const float t0 = Timer(start);
  const float t1 = Timer(end);
  const auto second_of_day = [](const LocalTime& t) {
    return t.hour * 3600 + t.minute * 60 + t.second;
  };
  return BaseNameOf(job.OldPath) + " >> " + TimerText(t0) + " <- " +
         ElapsedText(static_cast<double>(t1) - static_cast<double>(t0)) + " -> " + TimerText(t1) +
         " ///// " + std::to_string(second_of_day(end) - second_of_day(start));
}

void RecordJob(RunServices& services, RunLog& log, const LocalTime& start) {
  const JobRecord& job = services.job();
  for (const NativePath* path : {&job.OldPath, &job.NewPath, &job.OutPath}) {
    if (!path->empty()) log.WriteRunRecord(*path);
  }
  if (job.DebugLog) log.WriteDebugLog(DebugText(job, start, services.platform().Now()));
  log.CompactHistory();
}

// The text of one side of a directory compare; a side that is no directory information file
// becomes its folder.
std::string DirCompSideText(NativePath& path, const std::string& info_pattern,
                            const char* behind_file, const char* behind_folder) {
  const std::string name = FileNameOf(path);
  if (MatchesPattern(name, info_pattern, LetterCase::kIgnore)) {
    return PathToUtf8(NativePath(name)) + behind_file;
  }
  path = DirOf(path);
  return PathToUtf8(path) + behind_folder;
}

std::string NameForMessage(const NativePath& path) {
  return PathToUtf8(NativePath(FileNameOf(path)));
}

}  // namespace

void RunJob(RunServices& services, const JobSurroundings& surroundings) {
  JobRecord& job = services.job();
  if (services.options().OutListClear == 1) {
    services.front_end().ClearResults();
    job.RunCounter = 0;
  }
  const LocalTime start = services.platform().Now();
  services.UpdateProgress(0, 0);
  services.front_end().JobStarted();
  services.platform().YieldToUi();
  Dispatch(services, surroundings.sides);
  if (surroundings.log != nullptr) RecordJob(services, *surroundings.log, start);
  services.front_end().JobEnded();
}

std::string JobCaption(const JobRecord& job) {
  switch (job.JobKind) {
    case JobKind::kComp:
      return job.FileCount > 1 ? "Ledrix  < MultiSelect Compare >" : "Ledrix  < Compare >";
    case JobKind::kStepCnt:
      return "Ledrix  < StepCount >";
    case JobKind::kStepCsv:
      return "Ledrix  < StepCount CSV Mode >";
    case JobKind::kDirEdit:
      return "Ledrix  < Directory Compare Edit > ";
    case JobKind::kDirComp:
      return std::string("Ledrix  < Directory Compare ") +
             modDComp::RangeText(static_cast<modDComp::CompareRange>(job.CompareRange)) + " > ";
  }
  return {};
}

std::string JobMessage(RunServices& services) {
  JobRecord& job = services.job();
  switch (job.JobKind) {
    case JobKind::kComp:
      if (job.FileCount >= 2) {
        return "複数コンペア （ " + std::to_string(job.FileCount) + " ファイル ） を開始します";
      }
      NameOutputs(services);
      return NameForMessage(job.OldPath) + " と " + NameForMessage(job.NewPath) + " を判定し\r" +
             NameForMessage(job.OutPath) + " に出力します";
    case JobKind::kStepCnt:
      return "ステップカウントを開始実行します\r( " + PathToUtf8(job.OldPath) + " )";
    case JobKind::kStepCsv:
      return "ステップカウント(CSV)を行い " + NameForMessage(job.OutPath) + " に出力します\r(" +
             PathToUtf8(job.OldPath) + ")\r" + std::to_string(job.FileCount) + " File";
    case JobKind::kDirEdit:
      return PathToUtf8(job.OldPath) + " の情報を\r" + PathToUtf8(job.OutPath) + " に出力します";
    case JobKind::kDirComp: {
      const std::string& pattern = services.options().ComboDLst;
      const std::string old_text =
          DirCompSideText(job.OldPath, pattern, " ﾃﾞｨﾚｸﾄﾘ情報ﾌｧｲﾙと ", " と");
      const std::string new_text =
          DirCompSideText(job.NewPath, pattern, " ﾃﾞｨﾚｸﾄﾘ情報ﾌｧｲﾙを比較し", " を比較し");
      return old_text + new_text + "\r" + NameForMessage(job.OutPath) + " に出力します";
    }
  }
  return {};
}

}  // namespace ledrix
