// The outputs of one job, so that no two of its pairs write the same file.
#pragma once

#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "platform/error.h"
#include "platform/files.h"
#include "platform/native_path.h"

namespace ledrix {

class OutputClaims {
 public:
  struct Refusal {
    size_t index;
    Error error;
  };
  // The first of a pair's outputs that an earlier pair has claimed: the same path, the same file,
  // or the same place by way of links. Empty paths are passed over, and so is a device such as
  // /dev/null, which any number of pairs may have.
  std::optional<Refusal> Refuse(const std::vector<NativePath>& outputs) const;
  // Claims outputs that are not refused.
  void Take(const std::vector<NativePath>& outputs);

  // True for a file that is one of the claimed outputs.
  bool Holds(const NativePath& path) const;

 private:
  // Device and inode of the folder, and the name in it.
  using Place = std::tuple<dev_t, ino_t, std::string>;
  static std::optional<Place> PlaceOf(const NativePath& path);

  std::set<std::string> paths_;
  std::set<Place> places_;
  FileSet files_;
};

}  // namespace ledrix
