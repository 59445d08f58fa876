// Runs a built program from outside, as a user or a script would.
#pragma once

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
};

ProgramResult RunProgram(const std::vector<std::string>& command,
                         const ProgramOptions& options = {});

}  // namespace ledrix::test
