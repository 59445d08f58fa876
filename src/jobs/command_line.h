// The "/old ... /new ..." command line of the desktop program.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ledrix {

// What the command line asks for; paths as they were given.
struct CommandLineArgs {
  std::string old_path;
  std::string new_path;
  std::string output_path;          // the listing itself, not a folder
  std::string list_value;           // accepted, read by nothing
  std::vector<std::string> others;  // what is neither a keyword nor the value of one
  bool merge_marks = false;
  bool debug_log = false;

  // True when both files are named: one pair is compared without a window.
  bool is_batch() const { return !old_path.empty() && !new_path.empty(); }
};

// Reads a command line given as one text: pieces between double quotes are one token each, the
// rest is cut at spaces. Only the space counts as blank.
CommandLineArgs ParseCommandLine(std::string_view text);

// Reads a command line given as arguments: each is one token, spaces at its ends taken off.
//
// The keywords "/old", "/new", "/out", "/lst" take the token behind them, "/Dm" and "/Dg" are
// switches; letter case does not count. A value is looked at as a keyword as well, and any other
// token is passed over.
CommandLineArgs ParseCommandLine(const std::vector<std::string>& arguments);

}  // namespace ledrix
