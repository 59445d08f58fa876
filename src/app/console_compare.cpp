#include "app/console_compare.h"

#include <algorithm>
#include <optional>
#include <set>
#include <string>

#include "app/console_options.h"
#include "app/console_run.h"
#include "app/console_view.h"
#include "jobs/output_names.h"
#include "platform/files.h"
#include "platform/folders.h"

namespace ledrix {
namespace {

// What a side is called where its path tells nothing.
constexpr const char* kInputLabel = "標準入力";
constexpr const char* kInputPath = "/dev/stdin";

bool IsNull(const NativePath& path) {
  const Result<FileInfo> info = GetFileInfo(path);
  return info.ok() && info.value().kind == FileKind::kNull;
}

// Standard input, or a pipe that the shell made: no folder holds it.
bool IsInput(const NativePath& path) {
  const std::string& bytes = path.bytes();
  return bytes == kInputPath || bytes.starts_with("/dev/fd/") ||
         bytes.starts_with("/proc/self/fd/");
}

struct FolderFiles {
  FileList files;       // the regular ones, links to one included, in byte order of their names
  int64_t folders = 0;  // how many stand beside them
};

// `unread` is what a failure is about: the folder, or what could not be looked at in it.
Result<FolderFiles> ListFiles(const NativePath& folder, NativePath& unread) {
  unread = folder;
  const auto note = [&](const LostEntry& lost) {
    unread = folder + lost.name;
    return BadEntry::kEndsReading;
  };
  const Result<std::vector<FolderEntry>> entries = ReadFolder(
      folder, [] {}, note);
  if (!entries.ok()) return entries.error();
  FolderFiles list;
  for (const FolderEntry& entry : entries.value()) {
    if (entry.info.kind == FileKind::kRegular) list.files.entries.push_back({entry.name, false});
    if (entry.info.kind == FileKind::kFolder) ++list.folders;
  }
  return list;
}

// The file of a folder that pairs with a path: of the same name, letter case aside if need be.
NativePath NamesakeIn(const NativePath& folder, const NativePath& path) {
  const std::string name = FileNameOf(path);
  NativePath unread;
  const Result<FolderFiles> list = ListFiles(AddBackslash(folder), unread);
  if (!list.ok()) return AddBackslash(folder) + name;
  const FileList& files = list.value().files;
  const size_t found = NameIndex(files).Find(name);
  return AddBackslash(folder) + (found == std::string::npos ? name : files.entries[found].name);
}

void ChooseOutputs(const OptionRecord& options, const std::string& out, OutputChoices& choices,
                   NativePath& listing) {
  if (out.empty()) {
    if (IsOn(options.ContOutDir)) choices.OutputDirMode = OutputDirMode::kConstant;
    return;
  }
  const NativePath path = MakeAbsolute(NativePath(out));
  const bool is_folder = out.back() == '/' || IsFolder(path);
  choices.OutputDirMode = OutputDirMode::kElse;
  choices.ElseOutputDir = is_folder ? path : DirOf(path);
  if (!is_folder) listing = path;
}

// The name of every output that a pair of this job would have, asked for or not.
std::set<std::string> PossibleOutputs(const ConsoleRun& run) {
  OutputChoices choices = run.job.outputs;
  choices.OptSbnList = choices.OptMrgSrc = true;
  std::set<std::string> outputs;
  for (const FileList::Entry& entry : run.sides[Side::kOld].files.entries) {
    if (!entry.selected) continue;
    const OutputNames names =
        MakeOutputNames(run.options, choices, run.sides[Side::kOld].folder + entry.name,
                        run.sides[Side::kNew].folder + entry.name);
    for (const NativePath& path : {names.OutPath, names.SbnPath, names.MrgPath,
                                   DirOf(names.OutPath) + run.options.ComboCSVName}) {
      outputs.insert(FileNameOf(path));
    }
  }
  return outputs;
}

// Names that only one side holds are a difference of their own, unless they are excluded or are
// outputs of such a compare.
void ReportSingles(ConsoleRun& run, Side side, const std::set<std::string>& outputs,
                   const char* text) {
  for (const FileList::Entry& entry : run.sides[side].files.entries) {
    const NativePath path = run.sides[side].folder + entry.name;
    if (entry.selected || outputs.count(entry.name) > 0) continue;
    if (run.services().IsExcludedType(entry.name)) continue;
    run.services().platform().ReportTrouble(PathToUtf8(path) + text);
    run.services().NoteEnd(JobEnd::kDifference);
  }
}

int CompareFolders(ConsoleRun& run) {
  JobRequest& request = run.request;
  PerSide<int64_t> folders;
  for (const Side side : kBothSides) {
    NativePath& path = side == Side::kOld ? request.OldPath : request.NewPath;
    path = AddBackslash(path);
    NativePath unread;
    Result<FolderFiles> list = ListFiles(path, unread);
    if (!list.ok()) return run.Refuse(PathToUtf8(unread) + ": " + DescribeError(list.error()));
    run.sides[side].folder = path;
    run.sides[side].files = std::move(list.value().files);
    folders[side] = list.value().folders;
  }
  SelectAllNamesakes(run.sides);
  const std::set<std::string> outputs = PossibleOutputs(run);
  ReportSingles(run, Side::kOld, outputs, ": 旧フォルダだけに有ります");
  ReportSingles(run, Side::kNew, outputs, ": 新フォルダだけに有ります");
  if (folders[Side::kOld] + folders[Side::kNew] > 0) {
    run.services().platform().ReportTrouble("サブフォルダは比較していません（旧 " +
                                            std::to_string(folders[Side::kOld]) + "、新 " +
                                            std::to_string(folders[Side::kNew]) + "）");
  }
  request.FileCount = static_cast<int64_t>(SelectedCount(run.sides[Side::kOld].files));
  request.IsMultiple = true;
  request.subfolders = folders;
  if (request.FileCount == 0 && request.evidence.path.empty())
    return static_cast<int>(run.services().end());
  return run.Run();
}

bool IsStandardInput(const std::string& path) {
  return path == "-";
}

// The paths and the labels of the two sides. Returns why they cannot be compared.
std::optional<std::string> TakeSides(const CompareArguments& arguments, JobRequest& request) {
  const bool old_is_input = IsStandardInput(arguments.old_path);
  const bool new_is_input = IsStandardInput(arguments.new_path);
  if (old_is_input && new_is_input) return "標準入力を指定できるのは片方だけです";
  const auto path = [](const std::string& given) {
    return MakeAbsolute(NativePath(IsStandardInput(given) ? kInputPath : given));
  };
  request.OldPath = path(arguments.old_path);
  request.NewPath = path(arguments.new_path);
  request.labels = {arguments.label_old, arguments.label_new};
  const bool has_folder = IsMeantAsFolder(request.OldPath) || IsMeantAsFolder(request.NewPath);
  if (has_folder && (old_is_input || new_is_input)) return "フォルダと標準入力は比較できません";
  if (has_folder && !(arguments.label_old + arguments.label_new).empty())
    return "--label-old と --label-new はファイル同士の比較に指定してください";
  for (const Side side : kBothSides) {
    const bool is_input = side == Side::kOld ? old_is_input : new_is_input;
    if (is_input && request.labels[side].empty()) request.labels[side] = kInputLabel;
  }
  return std::nullopt;
}

// Outputs go beside a file, which neither an input nor an empty file in /dev is.
std::optional<std::string> TakeOutputsFromNewSide(ConsoleRun& run,
                                                  const CompareArguments& arguments) {
  JobRequest& request = run.request;
  if (!arguments.out.empty()) return std::nullopt;
  if (!IsInput(request.OldPath) && !IsNull(request.OldPath)) return std::nullopt;
  if (IsInput(request.NewPath) || IsNull(request.NewPath))
    return "出力先を --out で指定してください";
  OutputChoices& choices = run.job.outputs;
  choices.OutputDirMode = OutputDirMode::kNewDir;
  if (!IsInput(request.OldPath)) return std::nullopt;
  request.OutPath = MakeOutputNames(run.options, choices, request.NewPath, request.NewPath).OutPath;
  return std::nullopt;
}

int Compare(ConsoleRun& run, const CompareArguments& arguments) {
  if (!run.LoadOptions()) return kTroubleStatus;
  if (const auto refused = ChooseCharset(arguments.charset, run.options)) {
    return run.Refuse(*refused);
  }
  JobRequest& request = run.request;
  OutputChoices& choices = run.job.outputs;
  if (const auto refused = TakeSides(arguments, request)) return run.Refuse(*refused);
  run.keeps_history =
      !arguments.no_history && !IsInput(request.OldPath) && !IsInput(request.NewPath);
  choices.OptSbnList = arguments.difference_file;
  choices.OptCsvList = arguments.csv;
  choices.OptMrgSrc = arguments.merge_source;
  choices.MergeMarks = arguments.marks;
  ChooseOutputs(run.options, arguments.out, choices, request.OutPath);
  if (const auto refused = RefuseMissingFolder(arguments.out)) return run.Refuse(*refused);
  run.AskForEvidence(arguments.evidence);

  const bool old_is_folder = IsMeantAsFolder(request.OldPath);
  const bool new_is_folder = IsMeantAsFolder(request.NewPath);
  if (old_is_folder && new_is_folder) {
    if (!request.OutPath.empty()) {
      return run.Refuse("フォルダの比較の出力先はフォルダでなければなりません: " +
                        PathToUtf8(request.OutPath));
    }
    return CompareFolders(run);
  }
  if (const auto refused = TakeOutputsFromNewSide(run, arguments)) return run.Refuse(*refused);
  // A file and a folder: the file of the same name in that folder.
  for (const NativePath& path : {request.OldPath, request.NewPath}) {
    const Result<FileInfo> info = GetFileInfo(path);
    if ((old_is_folder || new_is_folder) && !info.ok()) {
      return run.Refuse(PathToUtf8(path) + ": " + DescribeError(info.error()));
    }
  }
  if (old_is_folder) request.OldPath = NamesakeIn(request.OldPath, request.NewPath);
  if (new_is_folder) request.NewPath = NamesakeIn(request.NewPath, request.OldPath);
  return run.Run();
}

}  // namespace

int RunCompareCommand(const CommonArguments& common, const CompareArguments& arguments) {
  ConsoleRun run(common);
  int status = Compare(run, arguments);
  if (arguments.view) status = std::max(status, ShowListings(run.Outputs(), ViewArguments()));
  return status;
}

}  // namespace ledrix
