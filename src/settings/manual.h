// The chapters of the manual (docs/manual) that the programs show pieces of; they are compiled in.
//
// A chapter is Markdown of which the programs read this much:
//
//   chapter = title and introduction, entry...
//   entry   = "## NAME" or "### NAME <!-- KEY -->", empty line, block...
//   block   = lines without an empty one, empty line
//
// Below options.md's headings stand "`KEY` VALUES（既定値 DEFAULT）" and the text of one line;
// below those of windows.md the text and, where keys do the same, "キー: KEYS". The entries of
// commands.md are described where they are read (app/console_help.cpp).
#pragma once

#include <string_view>
#include <vector>

namespace ledrix {

extern const std::string_view kManualCommands;
extern const std::string_view kManualOptions;
extern const std::string_view kManualWindows;

struct ManualEntry {
  std::string_view name;
  std::string_view key;                  // empty when there is none
  std::vector<std::string_view> blocks;  // without line ends behind them
};

// In the order of the chapter; the views are of it.
std::vector<ManualEntry> ReadManual(std::string_view chapter);

}  // namespace ledrix
