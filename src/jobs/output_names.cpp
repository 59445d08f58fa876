#include "jobs/output_names.h"

#include <algorithm>

namespace ledrix {
namespace {

NativePath OutputFolder(const OptionRecord& options, const OutputChoices& choices,
                        const NativePath& old_path, const NativePath& new_path, PathStyle style) {
  switch (choices.OutputDirMode) {
    case OutputDirMode::kOldDir:
      return AddBackslash(DirOf(old_path, style), style);
    case OutputDirMode::kNewDir:
      return AddBackslash(DirOf(new_path, style), style);
    case OutputDirMode::kElse:
      return AddBackslash(choices.ElseOutputDir, style);
    case OutputDirMode::kConstant:
      return AddBackslash(NativePath(options.ContOutDirPath), style);
  }
  return {};
}

}  // namespace

std::string SelectedFileName(const FileList& list) {
  const auto& entries = list.entries;
  if (list.current && *list.current < entries.size() && entries[*list.current].selected) {
    return entries[*list.current].name;
  }
  const auto found = std::find_if(entries.begin(), entries.end(),
                                  [](const FileList::Entry& entry) { return entry.selected; });
  return found == entries.end() ? std::string() : found->name;
}

std::string FillPattern(std::string_view pattern, std::string_view base) {
  std::string filled;
  for (const char c : pattern) {
    if (c == '*') {
      filled += base;
    } else {
      filled += c;
    }
  }
  return filled;
}

OutputNames MakeOutputNames(const OptionRecord& options, const OutputChoices& choices,
                            const NativePath& old_path, const NativePath& new_path,
                            PathStyle style) {
  const NativePath folder = OutputFolder(options, choices, old_path, new_path, style);
  const bool by_new = choices.OutputDirMode == OutputDirMode::kNewDir;
  const std::string base = NameForPattern(by_new ? new_path : old_path, style);
  OutputNames names;
  names.OutPath = folder + FillPattern(options.ComboLstLst, base);
  if (choices.OptSbnList) names.SbnPath = folder + FillPattern(options.ComboLstSbn, base);
  if (choices.OptMrgSrc) {
    names.MrgPath = folder + (BaseNameOf(old_path, style) + "_MRG" + ExtensionOf(old_path, style));
  }
  return names;
}

OutputNames MakeSingleOutputNames(const OptionRecord& options, const JobRecord& job) {
  OutputNames names =
      MakeOutputNames(options, job.outputs, job.request.OldPath, job.request.NewPath);
  if (!job.request.OutPath.empty()) names.OutPath = job.request.OutPath;
  return names;
}

}  // namespace ledrix
