#include "platform/output_guard.h"

#include <algorithm>

#include "platform/files.h"

namespace ledrix {
namespace {

// Two names of one file, or of one place where no file stands yet. A device such as /dev/null may
// take more than one output.
bool IsSamePlace(const NativePath& a, const NativePath& b) {
  const Result<FileInfo> info_a = GetFileInfo(a);
  const Result<FileInfo> info_b = GetFileInfo(b);
  if (info_a.ok() && info_a.value().kind == FileKind::kOther) return false;
  if (a == b) return true;
  if (info_a.ok() && info_b.ok()) return IsSameFile(info_a.value(), info_b.value());
  if (info_a.ok() || info_b.ok() || FileNameOf(a) != FileNameOf(b)) return false;
  const Result<FileInfo> folder_a = GetFileInfo(DirOf(a));
  const Result<FileInfo> folder_b = GetFileInfo(DirOf(b));
  return folder_a.ok() && folder_b.ok() && IsSameFile(folder_a.value(), folder_b.value());
}

bool Holds(const std::vector<NativePath>& paths, const NativePath& path) {
  return std::any_of(paths.begin(), paths.end(),
                     [&path](const NativePath& other) { return IsSamePlace(other, path); });
}

}  // namespace

Status RefuseOutput(const NativePath& output, const std::vector<NativePath>& inputs,
                    const std::vector<NativePath>& other_outputs) {
  if (Holds(inputs, output)) return Error{ErrorKind::kInputAsOutput};
  if (Holds(other_outputs, output)) return Error{ErrorKind::kOutputTwice};
  return kNoError;
}

}  // namespace ledrix
