#include "app/console_compare.h"

#include <algorithm>

#include "app/console_options.h"
#include "app/console_run.h"
#include "platform/files.h"

namespace ledrix {
namespace {

void ChooseOutputs(const OptionRecord& options, const std::string& out, OutputChoices& choices,
                   NativePath& listing) {
  if (out.empty()) {
    if (options.ContOutDir == 1) choices.OutputDirMode = OutputDirMode::kConstant;
    return;
  }
  const NativePath path = MakeAbsolute(NativePath(out));
  const bool is_folder = out.back() == '/' || IsFolder(path);
  choices.OutputDirMode = OutputDirMode::kElse;
  choices.ElseOutputDir = is_folder ? path : DirOf(path);
  if (!is_folder) listing = path;
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
  JobRequest& request = run.request;
  for (int side = 0; side < 2; ++side) {
    NativePath& path = side == 0 ? request.OldPath : request.NewPath;
    path = AddBackslash(path);
    Result<FileList> files = ListFiles(path);
    if (!files.ok()) return run.Refuse(PathToUtf8(path) + ": " + DescribeError(files.error()));
    run.sides[side] = {path, "", std::move(files.value())};
  }
  SelectAllNamesakes(run.sides);
  ReportSingles(run, 0, ": 旧フォルダだけに有ります");
  ReportSingles(run, 1, ": 新フォルダだけに有ります");
  request.FileCount = static_cast<int64_t>(SelectedCount(run.sides[0].files));
  request.IsMultiple = true;
  if (request.FileCount == 0) return static_cast<int>(run.services().end());
  return run.Run();
}

}  // namespace

int RunCompareCommand(const CommonArguments& common, const CompareArguments& arguments) {
  ConsoleRun run(common);
  if (!run.LoadOptions()) return kTroubleStatus;
  if (const auto refused = ChooseCharset(arguments.charset, run.options)) {
    return run.Refuse(*refused);
  }
  JobRequest& request = run.request;
  OutputChoices& choices = run.job.outputs;
  request.OldPath = MakeAbsolute(NativePath(arguments.old_path));
  request.NewPath = MakeAbsolute(NativePath(arguments.new_path));
  choices.OptSbnList = arguments.difference_file;
  choices.OptCsvList = arguments.csv;
  choices.OptMrgSrc = arguments.merge_source;
  choices.MergeMarks = arguments.marks;
  ChooseOutputs(run.options, arguments.out, choices, request.OutPath);

  const bool old_is_folder = IsFolder(request.OldPath);
  const bool new_is_folder = IsFolder(request.NewPath);
  if (old_is_folder && new_is_folder) {
    if (!request.OutPath.empty()) {
      return run.Refuse("フォルダの比較の出力先はフォルダでなければなりません: " +
                        PathToUtf8(request.OutPath));
    }
    return CompareFolders(run);
  }
  // A file and a folder: the file of the same name in that folder.
  for (const NativePath& path : {request.OldPath, request.NewPath}) {
    const Result<FileInfo> info = GetFileInfo(path);
    if ((old_is_folder || new_is_folder) && !info.ok()) {
      return run.Refuse(PathToUtf8(path) + ": " + DescribeError(info.error()));
    }
  }
  if (old_is_folder) request.OldPath = AddBackslash(request.OldPath) + FileNameOf(request.NewPath);
  if (new_is_folder) request.NewPath = AddBackslash(request.NewPath) + FileNameOf(request.OldPath);
  return run.Run();
}

}  // namespace ledrix
