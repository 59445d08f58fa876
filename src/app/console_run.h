// One run of the console program: its records and services, made once and handed down.
#pragma once

#include <string>
#include <vector>

#include "app/console_arguments.h"
#include "app/console_front_end.h"
#include "app/console_platform.h"
#include "app/program_run.h"
#include "jobs/file_sides.h"
#include "run/run_services.h"

namespace ledrix {

static_assert(kTroubleStatus == static_cast<int>(JobEnd::kTrouble));

// True for a folder, and for what is written as one even if it cannot be looked at: a job of
// folders must not turn into one of files.
bool IsMeantAsFolder(const NativePath& path);

class ConsoleRun {
 public:
  explicit ConsoleRun(const CommonArguments& common)
      : common_(common), front_end_(common.quiet, common.progress) {
    job.GuiMode = true;
    job.skip_rule = SkipRule::kSameContents;
  }

  // Loads the options. When it returns false the user was told why the run ends.
  [[nodiscard]] bool LoadOptions();

  // Tells the user something and returns the status of trouble.
  int Refuse(const std::string& text);

  // Puts what is asked of the record into the request. `common` holds the command line.
  void AskForEvidence(const EvidenceArguments& evidence);

  // Runs the job that `request` describes, with the run log unless it is not to be kept or the
  // settings are "none".
  // Returns the exit status.
  int Run();

  // The outputs that the job told of, each once.
  std::vector<NativePath> Outputs() const;

  RunServices& services() { return services_; }

  bool keeps_history = true;  // the run log is written

  OptionRecord options;
  JobRecord job;
  JobRequest request;
  FileSides sides;

 private:
  const CommonArguments& common_;
  ConsolePlatform platform_{kConsoleProgram, job};
  ConsoleFrontEnd front_end_;
  RunServices services_{options, job, platform_, front_end_};
};

}  // namespace ledrix
