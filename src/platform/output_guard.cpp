#include "platform/output_guard.h"

#include <unistd.h>

#include <algorithm>
#include <climits>

#include "platform/files.h"

namespace ledrix {
namespace {

// The path behind a chain of links, also when nothing stands at its end yet.
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

// Two names of one file, or of one place where no file stands yet. A device such as /dev/null may
// take more than one output.
bool IsSamePlace(const NativePath& path_a, const NativePath& path_b) {
  const Result<FileInfo> info_a = GetFileInfo(path_a);
  const Result<FileInfo> info_b = GetFileInfo(path_b);
  if (info_a.ok() && info_a.value().kind == FileKind::kOther) return false;
  if (path_a == path_b) return true;
  if (info_a.ok() && info_b.ok()) return IsSameFile(info_a.value(), info_b.value());
  if (info_a.ok() || info_b.ok()) return false;
  const NativePath a = BehindLinks(path_a);
  const NativePath b = BehindLinks(path_b);
  if (FileNameOf(a) != FileNameOf(b)) return false;
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
