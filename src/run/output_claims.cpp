#include "run/output_claims.h"

#include "platform/output_guard.h"

namespace ledrix {

std::optional<OutputClaims::Place> OutputClaims::PlaceOf(const NativePath& path) {
  const NativePath behind = BehindLinks(path);
  const Result<FileInfo> folder = GetFileInfo(DirOf(behind));
  if (!folder.ok()) return std::nullopt;
  return Place(folder.value().device, folder.value().inode, FileNameOf(behind));
}

bool OutputClaims::Holds(const NativePath& path) const {
  if (paths_.count(path.bytes()) > 0 || files_.Holds(path)) return true;
  const std::optional<Place> place = PlaceOf(path);
  return place && places_.count(*place) > 0;
}

namespace {

bool IsDeviceAt(const NativePath& path) {
  const Result<FileInfo> info = GetFileInfo(path);
  return info.ok() && IsDevice(info.value());
}

}  // namespace

std::optional<OutputClaims::Refusal> OutputClaims::Refuse(
    const std::vector<NativePath>& outputs) const {
  for (size_t i = 0; i < outputs.size(); ++i) {
    if (outputs[i].empty() || IsDeviceAt(outputs[i])) continue;
    if (Holds(outputs[i])) return Refusal{i, Error{ErrorKind::kWrittenByJob}};
  }
  return std::nullopt;
}

void OutputClaims::Take(const std::vector<NativePath>& outputs) {
  for (const NativePath& path : outputs) {
    if (path.empty() || IsDeviceAt(path)) continue;
    paths_.insert(path.bytes());
    if (std::optional<Place> place = PlaceOf(path)) places_.insert(std::move(*place));
    files_.Add(path);
  }
}

}  // namespace ledrix
