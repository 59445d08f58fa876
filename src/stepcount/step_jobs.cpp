#include "stepcount/step_jobs.h"

#include "platform/fixed_width.h"
#include "platform/output_guard.h"
#include "stepcount/line_counter.h"
#include "text/code_page_932.h"

namespace ledrix::modStep {
namespace {

constexpr double kProgressUnits = 5635;

// The job's output. When it cannot be created or written the job goes on without it.
class JobOutput {
 public:
  JobOutput(RunServices& services, const std::vector<NativePath>& inputs) : services_(services) {
    const NativePath& path = services.job().OutPath;
    if (const Status refused = RefuseOutput(path, inputs, {}); !refused.ok()) {
      Report(refused.error());
      return;
    }
    Result<OutputFile> file = OutputFile::Create(path);
    if (file.ok()) {
      file_ = std::move(file.value());
    } else {
      Report(file.error());
    }
  }

  void Write(const SjisText& line) {
    if (file_) WriteLine(*file_, line);
  }

  // Closes the output and reports the job's result, or that the output could not be written.
  void Finish(const std::string& result) {
    if (file_) {
      if (const Status failure = file_->Close(); !failure.ok()) {
        file_->Discard();
        Report(failure.error());
        services_.AddResultLines(services_.job().OutPath, "エラー");
        return;
      }
    }
    services_.AddResultLines(services_.job().OutPath, result);
  }

 private:
  void Report(const Error& error) { services_.ReportFileTrouble(services_.job().OutPath, error); }

  RunServices& services_;
  std::optional<OutputFile> file_;
};

// Reports a file that could not be read, and a stop, as trouble of the job.
void NoteProblems(RunServices& services, const NativePath& path, const Result<int64_t>& count) {
  if (!count.ok()) services.ReportFileTrouble(path, count.error());
  if (services.job().StopRequested) services.NoteEnd(JobEnd::kTrouble);
}

}  // namespace

void StepCntJob(RunServices& services) {
  const NativePath& path = services.job().OldPath;
  JobOutput output(services, {path});
  services.UpdateProgress(kProgressUnits, 1);
  const Result<int64_t> counted = CountFileLines(services, path);
  NoteProblems(services, path, counted);
  const int64_t count = counted.ok() ? counted.value() : 0;
  output.Write("--- STEP COUNTER ---"_sjis);
  output.Write(EncodeSjis(FormatDateTime(services.platform().Now())));
  output.Write("File Name  [ "_sjis + PathToSjis(path) + " ]"_sjis);
  output.Write(EncodeSjis("STEP COUNT [ " + FormatThousands(count) + " ]"));
  output.Finish("LINE COUNT :  " + std::to_string(count));
}

void StepCsvJob(RunServices& services, const FileList& files) {
  JobRecord& job = services.job();
  const size_t items = files.entries.size();
  const double unit = items > 0 ? kProgressUnits / static_cast<double>(items) : 0;
  JobOutput output(services, {});
  output.Write("DIR［ "_sjis + PathToSjis(job.OldPath) + " ］ "_sjis +
               EncodeSjis(FormatDateTime(services.platform().Now())));
  output.Write("No.,File Name,STEP COUNT"_sjis);
  int64_t number = 0;
  for (size_t i = 1; i <= items && !job.StopRequested; ++i) {
    const std::string& name = files.entries[i - 1].name;
    const NativePath path = job.OldPath + name;
    services.UpdateProgress(unit, static_cast<double>(i));
    services.SetMessage("ＣＳＶ形式ファイル出力中\r" + PathToUtf8(path) + "\r" + std::to_string(i) +
                        " / " + std::to_string(items) + " File");
    if (IsFolder(path)) continue;
    ++number;
    const Result<int64_t> count = CountFileLines(services, path);
    NoteProblems(services, path, count);
    output.Write(EncodeSjis(std::to_string(number) + ",") + PathToSjis(NativePath(name)) +
                 EncodeSjis("," + (count.ok() ? std::to_string(count.value()) : "-")));
  }
  output.Finish("FILE COUNT :  " + std::to_string(number));
}

}  // namespace ledrix::modStep
