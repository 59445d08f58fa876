#include "stepcount/step_jobs.h"

#include "platform/fixed_width.h"
#include "run/job_output.h"
#include "stepcount/line_counter.h"
#include "text/code_page_932.h"

namespace ledrix::modStep {
namespace {

constexpr double kProgressUnits = 5635;

// When the output cannot be created the job goes on without it.
void CreateOutput(RunServices& services, JobOutput& output) {
  if (const Status failed = output.Create(); !failed.ok()) {
    services.ReportFileTrouble(output.path(), failed.error());
  }
}

// Reports a file that could not be read, and a stop, as trouble of the job.
void NoteProblems(RunServices& services, const NativePath& path, const Result<int64_t>& count) {
  if (!count.ok()) services.ReportFileTrouble(path, count.error());
  if (services.job().StopRequested) services.NoteEnd(JobEnd::kTrouble);
}

}  // namespace

void StepCntJob(RunServices& services) {
  const NativePath& path = services.job().files.OldPath;
  JobOutput output(services, {path});
  CreateOutput(services, output);
  services.UpdateProgress(kProgressUnits, 1);
  const Result<int64_t> counted = CountFileLines(services, path);
  NoteProblems(services, path, counted);
  const int64_t count = counted.ok() ? counted.value() : 0;
  output.WriteLine("--- STEP COUNTER ---"_sjis);
  output.WriteLine(EncodeSjis(FormatDateTime(services.platform().Now())));
  output.WriteLine("File Name  [ "_sjis + PathToSjis(path) + " ]"_sjis);
  output.WriteLine(EncodeSjis("STEP COUNT [ " + FormatThousands(count) + " ]"));
  output.Finish("LINE COUNT :  " + std::to_string(count));
}

void StepCsvJob(RunServices& services, const FileList& files) {
  const JobRecord& job = services.job();
  const size_t items = files.entries.size();
  const double unit = items > 0 ? kProgressUnits / static_cast<double>(items) : 0;
  JobOutput output(services);
  CreateOutput(services, output);
  output.WriteLine("DIR［ "_sjis + PathToSjis(job.files.OldPath) + " ］ "_sjis +
                   EncodeSjis(FormatDateTime(services.platform().Now())));
  output.WriteLine("No.,File Name,STEP COUNT"_sjis);
  int64_t number = 0;
  for (size_t i = 1; i <= items && !job.StopRequested; ++i) {
    const std::string& name = files.entries[i - 1].name;
    const NativePath path = job.files.OldPath + name;
    services.UpdateProgress(unit, static_cast<double>(i));
    services.SetMessage("ＣＳＶ形式ファイル出力中\r" + PathToUtf8(path) + "\r" + std::to_string(i) +
                        " / " + std::to_string(items) + " File");
    if (IsFolder(path)) continue;
    ++number;
    const Result<int64_t> count = CountFileLines(services, path);
    NoteProblems(services, path, count);
    output.WriteLine(EncodeSjis(std::to_string(number) + ",") + PathToSjis(NativePath(name)) +
                     EncodeSjis("," + (count.ok() ? std::to_string(count.value()) : "-")));
  }
  output.Finish("FILE COUNT :  " + std::to_string(number));
}

}  // namespace ledrix::modStep
