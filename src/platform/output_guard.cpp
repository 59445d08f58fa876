#include "platform/output_guard.h"

#include <unistd.h>

#include <algorithm>
#include <climits>

namespace ledrix {
namespace {

// Two names of one place where no file stands yet.
bool IsSameNewPlace(const NativePath& path_a, const NativePath& path_b) {
  if (GetFileInfo(path_b).ok()) return false;
  const NativePath a = BehindLinks(path_a);
  const NativePath b = BehindLinks(path_b);
  if (FileNameOf(a) != FileNameOf(b)) return false;
  const Result<FileInfo> folder_a = GetFileInfo(DirOf(a));
  const Result<FileInfo> folder_b = GetFileInfo(DirOf(b));
  return folder_a.ok() && folder_b.ok() && IsSameFile(folder_a.value(), folder_b.value());
}

bool IsSameExisting(const FileInfo& output, const NativePath& other) {
  const Result<FileInfo> info = GetFileInfo(other);
  return info.ok() && IsSameFile(output, info.value());
}

bool Holds(const std::vector<NativePath>& paths, const NativePath& path) {
  return std::find(paths.begin(), paths.end(), path) != paths.end();
}

}  // namespace

NativePath BehindLinks(NativePath path) {
  constexpr int kMostLinks = 40;
  char target[PATH_MAX];
  for (int i = 0; i < kMostLinks; ++i) {
    const ssize_t size = readlink(path.c_str(), target, sizeof target);
    if (size <= 0) break;
    const std::string text(target, static_cast<size_t>(size));
    path = text[0] == '/' ? NativePath(text) : DirOf(path) + text;
  }
  return path;
}

Status RefuseOutput(const NativePath& output, const std::vector<NativePath>& inputs,
                    const std::vector<NativePath>& other_outputs, const FileSet& more_inputs) {
  const Result<FileInfo> info = GetFileInfo(output);
  if (info.ok() && IsDevice(info.value())) return Status();
  const auto is_same = [&](const NativePath& other) {
    if (other.empty()) return false;
    return info.ok() ? IsSameExisting(info.value(), other) : IsSameNewPlace(output, other);
  };
  // Where no file stands there is no input to lose.
  if (Holds(inputs, output) || (info.ok() && (std::any_of(inputs.begin(), inputs.end(), is_same) ||
                                              more_inputs.Holds(info.value())))) {
    return Error{ErrorKind::kInputAsOutput};
  }
  if (Holds(other_outputs, output) ||
      std::any_of(other_outputs.begin(), other_outputs.end(), is_same)) {
    return Error{ErrorKind::kOutputTwice};
  }
  return Status();
}

}  // namespace ledrix
