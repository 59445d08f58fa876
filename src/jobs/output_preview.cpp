#include "jobs/output_preview.h"

namespace ledrix {
namespace {

// Where the path begins in an entry of the result list.
constexpr size_t kPathStart = 14;

bool IsPathEntry(const std::string& entry) {
  return entry.size() > kPathStart && entry[0] == '(';
}

}  // namespace

std::string OutputPreview(const OptionRecord& options, const OutputChoices& choices,
                          const FileSides& sides) {
  const bool by_new = choices.OutputDirMode == OutputDirMode::kNewDir;
  const bool beside = by_new || choices.OutputDirMode == OutputDirMode::kOldDir;
  const FileSide& side = sides[by_new ? Side::kNew : Side::kOld];
  const std::string name = SelectedCount(side.files) == 1
                               ? SelectedFileName(side.files)
                               : std::string(by_new ? " <New File Name> " : " <Old File Name> ");
  const OutputNames names =
      beside ? MakeOutputNames(options, choices, AddBackslash(sides[Side::kOld].folder) + name,
                               AddBackslash(sides[Side::kNew].folder) + name)
             : MakeOutputNames(options, choices, NativePath(name), NativePath());
  std::string text = " LIST=" + PathToUtf8(names.OutPath);
  if (choices.OptSbnList) text += " / Sbn List";
  if (choices.OptCsvList) text += " / Csv List";
  if (choices.OptMrgSrc) text += " / Mrg Src";
  return text;
}

void FollowOutputSide(OutputChoices& choices, const FileSides& sides) {
  if (choices.OutputDirMode == OutputDirMode::kOldDir) {
    choices.ElseOutputDir = AddBackslash(sides[Side::kOld].folder);
  } else if (choices.OutputDirMode == OutputDirMode::kNewDir) {
    choices.ElseOutputDir = AddBackslash(sides[Side::kNew].folder);
  }
}

bool TellsOfFailure(const std::string& entry) {
  constexpr size_t kIndent = 4;
  return entry.compare(0, kIndent, "    ") == 0 &&
         entry.compare(kIndent, std::string::npos, PairEndText(PairEnd::kFailed)) == 0;
}

NativePath OutputOfEntry(const std::vector<std::string>& entries, size_t index) {
  if (index >= entries.size()) return {};
  if (!IsPathEntry(entries[index]) && index > 0) --index;
  return IsPathEntry(entries[index]) ? NativePath(entries[index].substr(kPathStart)) : NativePath();
}

}  // namespace ledrix
