// The files of one side, as a user or a command line chose them.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace ledrix {

// The file list of one side as plain data.
struct FileList {
  struct Entry {
    std::string name;
    bool selected = false;
  };
  std::vector<Entry> entries;
  std::optional<size_t> current;  // index into `entries`, from 0
};

}  // namespace ledrix
