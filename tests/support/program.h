// Runs a built program from outside, as a user or a script would.
#pragma once

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

namespace ledrix::test {

struct ProgramResult {
  int status = -1;  // exit status; 128 + number when a signal ended the program
  std::string out;
  std::string err;
};

struct ProgramOptions {
  std::vector<std::string> environment;  // NAME=VALUE, on top of the test's own
  std::string folder;                    // current folder; empty: the test's own
  bool as_nobody = false;                // drop root first, so that permissions count
  // Called in the test while the program runs.
  std::function<void(pid_t)> meanwhile;
};

// True when this process may do what `as_nobody` needs.
bool MayDropRoot();

ProgramResult RunProgram(const std::vector<std::string>& command,
                         const ProgramOptions& options = {});

}  // namespace ledrix::test
