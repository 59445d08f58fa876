// The command line of the console program.
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace ledrix {

// What every subcommand takes.
struct CommonArguments {
  std::vector<std::string> settings;  // KEY=VALUE, in the order given
  std::string settings_file;          // "none", a path, or empty for the user's own
  bool quiet = false;
  bool progress = false;
  std::string command_line;  // all of it, as it was given
};

// The record that a job is to leave; nothing when `path` is empty.
struct EvidenceArguments {
  std::string path;
  std::string sums;
  std::string signed_by;
};

// "-" is standard input, for one side.
struct CompareArguments {
  std::string old_path;
  std::string new_path;
  std::string out;
  std::string charset;
  bool difference_file = false;
  bool csv = false;
  bool merge_source = false;
  bool marks = false;
  EvidenceArguments evidence;
  bool view = false;      // show the listings afterwards
  std::string label_old;  // what outputs call the files, or empty
  std::string label_new;
  bool no_history = false;  // the run log is not written
};

struct JudgeArguments {
  std::vector<std::string> paths;  // "-" is standard input
  bool why = false;                // by all of their bytes, with what decided it
  bool pair = false;               // the two files together
};

struct StepsArguments {
  std::string path;
  std::string out;
};

struct SnapshotArguments {
  std::string folder;
  std::string out;
  EvidenceArguments evidence;
};

struct DirCompArguments {
  std::string old_path;
  std::string new_path;
  std::string out;
  std::string range = "current";  // "full", "current" or "none"
  std::string types;              // name patterns joined by ";", or empty
  bool no_history = false;        // the run log is not written
  EvidenceArguments evidence;
};

struct VerifyArguments {
  std::vector<std::string> records;
  std::vector<std::string> roots;  // OLD=NEW
  bool no_rerun = false;
};

// How a listing is shown on a terminal.
struct ViewArguments {
  std::string path;            // "-" is standard input
  std::string color = "auto";  // "auto", "always" or "never"
  std::string side;            // "old", "new", or empty for both
  int64_t first_block = 0;     // 0: all
  int64_t last_block = 0;
};

struct ConsoleArguments {
  CommonArguments common;
  std::variant<CompareArguments, StepsArguments, SnapshotArguments, DirCompArguments,
               JudgeArguments, VerifyArguments, ViewArguments>
      command;
};

// The program is to end at once with this text and status.
struct ConsoleExit {
  std::string text;  // UTF-8, one or more lines, without the last line end
  int status = 0;
};

// Reads the command line as main gets it.
std::variant<ConsoleArguments, ConsoleExit> ParseConsoleArguments(int argc, char** argv);

}  // namespace ledrix
