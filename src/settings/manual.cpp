#include "settings/manual.h"

#include "text/ascii.h"

namespace ledrix {
namespace {

constexpr std::string_view kKeyBegins = " <!-- ";
constexpr std::string_view kKeyEnds = " -->";

ManualEntry ReadHeading(std::string_view line) {
  line.remove_prefix(line.find(' ') + 1);
  const size_t key = line.find(kKeyBegins);
  if (key == std::string_view::npos) return {.name = line, .key = {}, .blocks = {}};
  std::string_view rest = line.substr(key + kKeyBegins.size());
  return {.name = line.substr(0, key), .key = rest.substr(0, rest.find(kKeyEnds)), .blocks = {}};
}

}  // namespace

std::vector<ManualEntry> ReadManual(std::string_view chapter) {
  std::vector<ManualEntry> entries;
  bool is_in_block = false;
  while (!chapter.empty()) {
    const std::string_view line = TakeLine(chapter);
    if (line.starts_with("## ") || line.starts_with("### ")) {
      entries.push_back(ReadHeading(line));
      is_in_block = false;
    } else if (line.empty() || entries.empty()) {
      is_in_block = false;
    } else if (std::vector<std::string_view>& blocks = entries.back().blocks; is_in_block) {
      std::string_view& block = blocks.back();
      block = {block.data(), static_cast<size_t>(line.data() + line.size() - block.data())};
    } else {
      blocks.push_back(line);
      is_in_block = true;
    }
  }
  return entries;
}

}  // namespace ledrix
