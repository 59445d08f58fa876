#include "app/console_compare.h"

#include <algorithm>

#include "app/console_options.h"
#include "app/console_run.h"
#include "platform/files.h"

namespace ledrix {
namespace {

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

// Names that only one side holds are a difference of their own.
void ReportSingles(ConsoleRun& run, int side, const char* text) {
  for (const FileList::Entry& entry : run.sides[side].files.entries) {
    if (entry.selected) continue;
    run.services().platform().ReportTrouble(PathToUtf8(run.sides[side].folder + entry.name) + text);
    run.services().NoteEnd(JobEnd::kDifference);
  }
}

int CompareFolders(ConsoleRun& run) {
  JobRecord& job = run.job;
  for (int side = 0; side < 2; ++side) {
    NativePath& path = side == 0 ? job.OldPath : job.NewPath;
    path = AddBackslash(path);
    Result<FileList> files = ListFiles(path);
    if (!files.ok()) return run.Refuse(PathToUtf8(path) + ": " + DescribeError(files.error()));
    run.sides[side] = {path, "", std::move(files.value())};
  }
  SelectAllNamesakes(run.sides);
  ReportSingles(run, 0, ": 旧フォルダだけに有ります");
  ReportSingles(run, 1, ": 新フォルダだけに有ります");
  job.FileCount = static_cast<int64_t>(SelectedCount(run.sides[0].files));
  job.IsMultiple = true;
  if (job.FileCount == 0) return static_cast<int>(run.services().end());
  return run.Run();
}

}  // namespace

int RunCompareCommand(const CommonArguments& common, const CompareArguments& arguments) {
  ConsoleRun run(common);
  if (!run.LoadOptions()) return kTroubleStatus;
  if (const auto refused = ChooseCharset(arguments.charset, run.options)) {
    return run.Refuse(*refused);
  }
  JobRecord& job = run.job;
  job.OldPath = MakeAbsolute(NativePath(arguments.old_path));
  job.NewPath = MakeAbsolute(NativePath(arguments.new_path));
  job.OptSbnList = arguments.difference_file;
  job.OptCsvList = arguments.csv;
  job.OptMrgSrc = arguments.merge_source;
  job.MergeMarks = arguments.marks;
  ChooseOutputs(run.options, arguments.out, job);

  const bool old_is_folder = IsFolder(job.OldPath);
  const bool new_is_folder = IsFolder(job.NewPath);
  if (old_is_folder && new_is_folder) {
    if (!job.ListingPath.empty()) {
      return run.Refuse("フォルダの比較の出力先はフォルダでなければなりません: " +
                        PathToUtf8(job.ListingPath));
    }
    return CompareFolders(run);
  }
  // A file and a folder: the file of the same name in that folder.
  for (const NativePath& path : {job.OldPath, job.NewPath}) {
    const Result<FileInfo> info = GetFileInfo(path);
    if ((old_is_folder || new_is_folder) && !info.ok()) {
      return run.Refuse(PathToUtf8(path) + ": " + DescribeError(info.error()));
    }
  }
  if (old_is_folder) job.OldPath = AddBackslash(job.OldPath) + FileNameOf(job.NewPath);
  if (new_is_folder) job.NewPath = AddBackslash(job.NewPath) + FileNameOf(job.OldPath);
  job.FileCount = 1;
  return run.Run();
}

}  // namespace ledrix
