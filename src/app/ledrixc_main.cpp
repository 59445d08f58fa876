// The console program.
#include <unistd.h>

#include <cstdio>

#include "app/console_arguments.h"
#include "app/console_compare.h"
#include "app/console_front_end.h"
#include "app/console_jobs.h"
#include "app/console_judge.h"
#include "app/console_verify.h"
#include "app/console_view.h"
#include "app/program_run.h"
#include "platform/terminal.h"

namespace ledrix {
namespace {

int Run(const CommonArguments& common, const CompareArguments& arguments) {
  return RunCompareCommand(common, arguments);
}
int Run(const CommonArguments& common, const StepsArguments& arguments) {
  return RunStepsCommand(common, arguments);
}
int Run(const CommonArguments& common, const SnapshotArguments& arguments) {
  return RunSnapshotCommand(common, arguments);
}
int Run(const CommonArguments& common, const DirCompArguments& arguments) {
  return RunDirCompCommand(common, arguments);
}
int Run(const CommonArguments& common, const JudgeArguments& arguments) {
  return RunJudgeCommand(common, arguments);
}

int Run(const CommonArguments& common, const VerifyArguments& arguments) {
  return RunVerifyCommand(common, arguments);
}

int Run(const CommonArguments& /*common*/, const ViewArguments& arguments) {
  return RunViewCommand(arguments);
}

int Run(int argc, char** argv) {
  const auto parsed = ParseConsoleArguments(argc, argv);
  if (const auto* exit = std::get_if<ConsoleExit>(&parsed)) {
    if (exit->status == 0) {
      std::printf("%s\n", exit->text.c_str());
    } else {
      std::fprintf(stderr, "%s\n", ShownOn(STDERR_FILENO, exit->text).c_str());
    }
    return exit->status;
  }
  const auto& arguments = std::get<ConsoleArguments>(parsed);
  return std::visit([&arguments](const auto& command) { return Run(arguments.common, command); },
                    arguments.command);
}

}  // namespace
}  // namespace ledrix

int main(int argc, char** argv) {
  int status = ledrix::RunProgram(ledrix::kConsoleProgram, ledrix::Run, argc, argv);
  // What did not reach standard output is trouble as well.
  if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
    ledrix::WriteTrouble(ledrix::kConsoleProgram, "標準出力に書き込めません");
    status = ledrix::kTroubleStatus;
  }
  return status;
}
