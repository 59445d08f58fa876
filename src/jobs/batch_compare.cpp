#include "jobs/batch_compare.h"

#include "compare/pair_driver.h"
#include "jobs/output_names.h"
#include "platform/output_guard.h"
#include "text/code_page_932.h"

namespace ledrix {
namespace {

constexpr const char* kLogName = "ledrixc.log";
constexpr const char* kOldMissing = "  OLD NOTHING         : ";
constexpr const char* kNewMissing = "  NEW NOTHING(削除扱) : ";
constexpr const char* kListingFailed = "  LIST OPEN ERROR     : ";
constexpr const char* kSettingsUnread = "  SETTINGS ERROR      : ";

void FillJob(const CommandLineArgs& args, RunServices& services) {
  JobRecord& job = services.job();
  job.outputs = OutputChoices();
  job.outputs.MergeMarks = args.merge_marks;
  job.DebugLog = args.debug_log;
  services.options().StartMsg = 0;
  JobRequest request;
  request.OldPath = MakeAbsolute(NativePath(args.old_path));
  request.NewPath = MakeAbsolute(NativePath(args.new_path));
  if (!args.output_path.empty()) request.OutPath = MakeAbsolute(NativePath(args.output_path));
  BeginJob(job, std::move(request));
  static_cast<OutputNames&>(job.files) = MakeSingleOutputNames(services.options(), job);
}

// The log may fail; nothing is told of that.
class BatchLog {
 public:
  BatchLog(const NativePath& path, PlatformServices& platform) : platform_(platform) {
    Result<OutputFile> file = OutputFile::Append(path);
    if (file.ok()) file_ = std::move(file.value());
  }

  void Write(const char* label, const NativePath& path) {
    if (!file_) return;
    file_->Write(FormatDateTime(platform_.Now()));
    file_->Write((EncodeSjis(label) + PathToSjis(path)).bytes());
    file_->Write("\r\n");
  }
  void Close() {
    if (file_) file_->Close().Ignore();
  }

 private:
  PlatformServices& platform_;
  std::optional<OutputFile> file_;
};

// A pipe is not opened here: that would take its content from the compare.
Status CheckReadable(const NativePath& path) {
  const Result<FileInfo> info = GetFileInfo(path);
  if (info.ok() && info.value().kind == FileKind::kPipe) return Status();
  const Result<InputFile> file = InputFile::Open(path);
  return file.status();
}

// Leaves the listing empty. Nothing is opened when it is one of the inputs.
Status CheckCreatable(const JobRecord& job) {
  if (const Status refused =
          RefuseOutput(job.files.OutPath, {job.files.OldPath, job.files.NewPath}, {});
      !refused.ok()) {
    return refused;
  }
  Result<OutputFile> file = OutputFile::Create(job.files.OutPath);
  return file.ok() ? file.value().Close() : Status(file.error());
}

// True when both files can be read and the listing can be created; every problem is logged and
// told.
bool CheckBatchFiles(const NativePath& log_path, RunServices& services) {
  const JobRecord& job = services.job();
  BatchLog log(log_path, services.platform());
  bool good = true;
  const auto check = [&](const Status& problem, const char* label, const NativePath& path) {
    if (problem.ok()) return;
    log.Write(label, path);
    services.platform().ReportTrouble(PathToUtf8(path) + ": " + DescribeError(problem.error()));
    good = false;
  };
  check(CheckReadable(job.files.OldPath), kOldMissing, job.files.OldPath);
  check(CheckReadable(job.files.NewPath), kNewMissing, job.files.NewPath);
  check(CheckCreatable(job), kListingFailed, job.files.OutPath);
  log.Close();
  return good;
}

}  // namespace

void LogUnreadSettings(const NativePath& program_folder, const NativePath& settings,
                       PlatformServices& platform) {
  BatchLog log(program_folder + kLogName, platform);
  log.Write(kSettingsUnread, settings);
  log.Close();
}

void BatchCompare(const CommandLineArgs& args, const NativePath& program_folder,
                  RunServices& services) {
  FillJob(args, services);
  if (!CheckBatchFiles(program_folder + kLogName, services)) {
    services.NoteEnd(JobEnd::kTrouble);
    return;
  }
  services.platform().YieldToUi();
  const PairEnd end = modComp::ComparePair(services);
  if (end == PairEnd::kSkipped || end == PairEnd::kStopped) {
    services.platform().ReportTrouble(PathToUtf8(services.job().files.OldPath) + ": " +
                                      PairEndText(end));
  }
}

}  // namespace ledrix
