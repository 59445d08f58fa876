#include "app/console_verify.h"

#include <unistd.h>

#include <cstdio>

#include "app/console_front_end.h"
#include "app/console_platform.h"
#include "app/program_run.h"
#include "jobs/verify_evidence.h"
#include "platform/terminal.h"

namespace ledrix {
namespace {

// A path may hold anything; the tabs between the fields are ours.
void PrintLine(const std::string& line) {
  const size_t path = line.rfind('\t') + 1;
  std::printf("%s%s\n", line.substr(0, path).c_str(),
              ShownOn(STDOUT_FILENO, line.substr(path)).c_str());
}

}  // namespace

int RunVerifyCommand(const CommonArguments& common, const VerifyArguments& arguments) {
  VerifyRequest request;
  for (const std::string& record : arguments.records) {
    request.records.push_back(MakeAbsolute(NativePath(record)));
  }
  for (const std::string& root : arguments.roots) {
    const size_t equals = root.find('=');
    if (equals == std::string::npos || equals == 0 || equals + 1 == root.size()) {
      PrintTrouble(kConsoleProgram, "--root には OLD=NEW を指定してください: " + root);
      return kTroubleStatus;
    }
    request.roots.emplace_back(MakeAbsolute(NativePath(root.substr(0, equals))),
                               MakeAbsolute(NativePath(root.substr(equals + 1))));
  }
  request.reruns = !arguments.no_rerun;
  JobRecord job;
  ConsolePlatform platform(kConsoleProgram, job);
  const auto stopped = [&] {
    platform.YieldToUi();
    return job.StopRequested;
  };
  const VerifyReport report{[&](const std::string& line) {
                              if (!common.quiet) PrintLine(line);
                            },
                            [](const std::string& line) {
                              std::fflush(stdout);  // what was found before it
                              PrintTrouble(kConsoleProgram, line);
                            }};
  return static_cast<int>(VerifyEvidence(request, platform, stopped, report));
}

}  // namespace ledrix
