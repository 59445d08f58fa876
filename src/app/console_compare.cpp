#include "app/console_compare.h"

#include "app/console_front_end.h"
#include "app/console_options.h"
#include "app/console_platform.h"
#include "jobs/run_loop.h"
#include "platform/files.h"

namespace ledrix {
namespace {

constexpr int kTroubleStatus = static_cast<int>(JobEnd::kTrouble);

void ChooseOutputs(const OptionRecord& options, const std::string& out, JobRecord& job) {
  if (out.empty()) {
    if (options.ContOutDir == 1) job.OutputDirMode = OutputDirMode::kConstant;
    return;
  }
  const NativePath path = MakeAbsolute(NativePath(out));
  const bool is_folder = out.back() == '/' || IsFolder(path);
  job.OutputDirMode = OutputDirMode::kElse;
  job.ElseOutputDir = is_folder ? path : DirOf(path);
  if (!is_folder) job.ListingPath = path;
}

}  // namespace

int RunCompareCommand(const CommonArguments& common, const CompareArguments& arguments) {
  OptionRecord options;
  auto refused = LoadConsoleOptions(common, options);
  if (!refused) refused = ChooseCharset(arguments.charset, options);
  if (refused) {
    PrintTrouble(kConsoleProgram, *refused);
    return kTroubleStatus;
  }

  JobRecord job;
  job.OldPath = MakeAbsolute(NativePath(arguments.old_path));
  job.NewPath = MakeAbsolute(NativePath(arguments.new_path));
  for (const NativePath& path : {job.OldPath, job.NewPath}) {
    if (!IsFolder(path)) continue;
    PrintTrouble(kConsoleProgram, "フォルダの比較はまだ使用できません: " + PathToUtf8(path));
    return kTroubleStatus;
  }
  job.FileCount = 1;
  job.GuiMode = true;
  job.OptSbnList = arguments.difference_file;
  job.OptCsvList = arguments.csv;
  job.OptMrgSrc = arguments.merge_source;
  job.MergeMarks = arguments.marks;
  ChooseOutputs(options, arguments.out, job);

  ConsolePlatform platform(kConsoleProgram, job);
  ConsoleFrontEnd front_end(common.quiet, common.progress);
  RunServices services(options, job, platform, front_end);
  RunJob(services);
  return static_cast<int>(services.end());
}

}  // namespace ledrix
