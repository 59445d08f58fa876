#include "app/console_jobs.h"

#include <algorithm>

#include "app/console_run.h"
#include "jobs/run_loop.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "text/name_pattern.h"

namespace ledrix {
namespace {

std::string Unreadable(const NativePath& path, const Error& error) {
  return PathToUtf8(path) + ": " + DescribeError(error);
}

// The regular files directly in a folder, in byte order of their names, and every name that cannot
// be looked at: its count will be "-", and the count tells why.
Result<FileList> FilesToCount(const NativePath& folder) {
  FileList list;
  const auto keep = [&list](const LostEntry& lost) {
    if (!lost.is_folder) list.entries.push_back({lost.name, false});
    return BadEntry::kIsLeftOut;
  };
  const Result<std::vector<FolderEntry>> entries = ReadFolder(
      folder, [] {}, keep);
  if (!entries.ok()) return entries.error();
  for (const FolderEntry& entry : entries.value()) {
    if (entry.info.kind == FileKind::kRegular) list.entries.push_back({entry.name, false});
  }
  std::sort(list.entries.begin(), list.entries.end(),
            [](const FileList::Entry& a, const FileList::Entry& b) { return a.name < b.name; });
  return list;
}

int CountFolder(ConsoleRun& run, const NativePath& folder, const std::string& out) {
  run.request.JobKind = JobKind::kStepCsv;
  run.request.OldPath = AddBackslash(folder);
  run.request.OutPath =
      out.empty() ? run.request.OldPath + "STEP.CSV" : MakeAbsolute(NativePath(out));
  Result<FileList> files = FilesToCount(run.request.OldPath);
  if (!files.ok()) return run.Refuse(Unreadable(folder, files.error()));
  // The output of an earlier run under its usual name is no source; any other file is one.
  FileSet output;
  output.Add(run.request.OutPath);
  const auto is_output = [&](const FileList::Entry& entry) {
    return output.Holds(run.request.OldPath + entry.name);
  };
  std::vector<FileList::Entry>& entries = files.value().entries;
  if (out.empty()) {
    std::erase_if(entries, is_output);
  } else if (std::any_of(entries.begin(), entries.end(), is_output)) {
    return run.Refuse(Unreadable(run.request.OutPath, Error{ErrorKind::kInputAsOutput}));
  }
  if (files.value().entries.empty()) {
    return run.Refuse("ファイルボックスに対象ファイルが有りません: " + PathToUtf8(folder));
  }
  run.request.FileCount = static_cast<int64_t>(files.value().entries.size());
  run.sides[Side::kOld].folder = run.request.OldPath;
  run.sides[Side::kOld].files = std::move(files.value());
  return run.Run();
}

// True when the file name of a path matches the pattern of directory information files.
bool IsInfoName(const ConsoleRun& run, const NativePath& path) {
  return MatchesPattern(FileNameOf(path), run.options.ComboDLst, LetterCase::kIgnore);
}

CompareRange RangeOf(const std::string& argument) {
  if (argument == "full") return CompareRange::kFullPath;
  return argument == "none" ? CompareRange::kNoPath : CompareRange::kCurrentPath;
}

// A side is a folder, which then ends in a separator, or a directory information file.
bool TakeSide(ConsoleRun& run, const std::string& argument, NativePath& side) {
  side = MakeAbsolute(NativePath(argument));
  if (IsFolder(side)) side = AddBackslash(side);
  if (IsFolder(side) || IsInfoName(run, side)) return true;
  const Result<FileInfo> info = GetFileInfo(side);
  run.Refuse(info.ok() ? PathToUtf8(side) + ": ﾃﾞｨﾚｸﾄﾘ情報ﾌｧｲﾙの名称ではありません（" +
                             run.options.ComboDLst + "）"
                       : Unreadable(side, info.error()));
  return false;
}

}  // namespace

int RunStepsCommand(const CommonArguments& common, const StepsArguments& arguments) {
  ConsoleRun run(common);
  if (!run.LoadOptions()) return kTroubleStatus;
  const NativePath path = MakeAbsolute(NativePath(arguments.path));
  if (const auto refused = RefuseMissingFolder(arguments.out)) return run.Refuse(*refused);
  if (IsMeantAsFolder(path)) return CountFolder(run, path, arguments.out);
  run.request.JobKind = JobKind::kStepCnt;
  run.request.OldPath = path;
  run.request.OutPath = arguments.out.empty()
                            ? DirOf(path) + FillPattern(run.options.ComboStp, NameForPattern(path))
                            : MakeAbsolute(NativePath(arguments.out));
  return run.Run();
}

int RunSnapshotCommand(const CommonArguments& common, const SnapshotArguments& arguments) {
  ConsoleRun run(common);
  if (!run.LoadOptions()) return kTroubleStatus;
  const NativePath folder = MakeAbsolute(NativePath(arguments.folder));
  const Result<FileInfo> info = GetFileInfo(folder);
  if (!info.ok()) return run.Refuse(Unreadable(folder, info.error()));
  if (!IsFolder(folder)) return run.Refuse(PathToUtf8(folder) + ": フォルダではありません");
  if (const auto refused = RefuseMissingFolder(arguments.out)) return run.Refuse(*refused);
  run.request.JobKind = JobKind::kDirEdit;
  run.request.OldPath = AddBackslash(folder);
  run.request.OutPath = MakeAbsolute(NativePath(arguments.out));
  run.AskForEvidence(arguments.evidence);
  if (!IsInfoName(run, run.request.OutPath)) {
    return run.Refuse("ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱﾌｧｲﾙの拡張子が違います\r拡張子は " + run.options.ComboDLst +
                      " のみ有功です");
  }
  return run.Run();
}

int RunDirCompCommand(const CommonArguments& common, const DirCompArguments& arguments) {
  ConsoleRun run(common);
  if (!run.LoadOptions()) return kTroubleStatus;
  run.keeps_history = !arguments.no_history;
  if (const auto refused = RefuseMissingFolder(arguments.out)) return run.Refuse(*refused);
  run.request.JobKind = JobKind::kDirComp;
  run.request.CompareRange = RangeOf(arguments.range);
  run.AskForEvidence(arguments.evidence);
  run.request.OutPath = MakeAbsolute(NativePath(arguments.out));
  run.sides[Side::kOld].filter_entry = "全て (*.*)";
  if (!arguments.types.empty()) {
    run.options.DCompSelect = 1;
    run.sides[Side::kOld].filter_entry = "(" + arguments.types + ")";
  }
  if (!TakeSide(run, arguments.old_path, run.request.OldPath) ||
      !TakeSide(run, arguments.new_path, run.request.NewPath)) {
    return kTroubleStatus;
  }
  return run.Run();
}

}  // namespace ledrix
