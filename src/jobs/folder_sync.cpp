#include "jobs/folder_sync.h"

#include <algorithm>
#include <string>
#include <vector>

#include "jobs/file_sides.h"
#include "settings/option_record.h"
#include "text/ascii.h"

namespace ledrix {
namespace {

std::vector<std::string> NamesOf(const NativePath& folder) {
  std::vector<std::string> names = SplitAt(folder.bytes(), '/');
  std::erase(names, "");
  return names;
}

}  // namespace

std::optional<NativePath> CorrespondingFolder(const NativePath& from, const NativePath& to,
                                              const NativePath& other) {
  const std::vector<std::string> from_names = NamesOf(from);
  const std::vector<std::string> to_names = NamesOf(to);
  std::vector<std::string> names = NamesOf(other);
  const auto [left, entered] =
      std::mismatch(from_names.begin(), from_names.end(), to_names.begin(), to_names.end());
  for (auto name = from_names.end(); name != left;) {
    if (names.empty() || FoldedName(names.back()) != FoldedName(*--name)) return std::nullopt;
    names.pop_back();
  }
  names.insert(names.end(), entered, to_names.end());
  std::string path = "/";
  for (const std::string& name : names) path += name + "/";
  return NativePath(path);
}

}  // namespace ledrix
