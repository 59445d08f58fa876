// The console program.
#include <cstdio>
#include <ctime>
#include <exception>
#include <new>

#include "app/console_arguments.h"
#include "app/console_compare.h"
#include "app/console_front_end.h"
#include "app/console_jobs.h"
#include "app/console_judge.h"
#include "app/console_platform.h"
#include "app/console_run.h"
#include "app/signals.h"

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

int Run(int argc, char** argv) {
  const auto parsed = ParseConsoleArguments(argc, argv);
  if (const auto* exit = std::get_if<ConsoleExit>(&parsed)) {
    std::fprintf(exit->status == 0 ? stdout : stderr, "%s\n", exit->text.c_str());
    return exit->status;
  }
  const auto& arguments = std::get<ConsoleArguments>(parsed);
  return std::visit([&arguments](const auto& command) { return Run(arguments.common, command); },
                    arguments.command);
}

}  // namespace
}  // namespace ledrix

int main(int argc, char** argv) {
  tzset();
  ledrix::InstallSignalHandlers();
  int status = ledrix::kTroubleStatus;
  try {
    status = ledrix::Run(argc, argv);
  } catch (const std::bad_alloc&) {
    ledrix::PrintTrouble(ledrix::kConsoleProgram, "メモリが足りません");
  } catch (const std::exception& error) {
    ledrix::PrintTrouble(ledrix::kConsoleProgram, error.what());
  }
  // What did not reach standard output is trouble as well.
  if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
    ledrix::PrintTrouble(ledrix::kConsoleProgram, "標準出力に書き込めません");
    status = ledrix::kTroubleStatus;
  }
  return status;
}
