// The console program's stand-ins for a desktop: messages go to stderr, signals stop the job.
#pragma once

#include "jobs/run_services.h"
#include "platform/services.h"

namespace ledrix {

// Makes SIGINT, SIGTERM and SIGHUP a request to stop; a second one ends the program at once. A
// closed pipe and the file size limit become failed writes.
void InstallSignalHandlers();

// Writes one line to stderr; line breaks become " / ".
void PrintTrouble(const std::string& text);

class ConsolePlatform : public PlatformServices {
 public:
  // `job` must outlive the object.
  explicit ConsolePlatform(JobRecord& job) : job_(job) {}

  // Returns the default button.
  MessageAnswer ShowMessage(const Message& message) override;
  void ReportTrouble(const std::string& line) override;
  void YieldToUi() override;

 private:
  JobRecord& job_;
};

// Prints the result list on standard output and, on a terminal, the progress bar on stderr.
class ConsoleFrontEnd : public RunFrontEnd {
 public:
  explicit ConsoleFrontEnd(bool quiet, bool progress);
  ~ConsoleFrontEnd() override { ClearProgress(); }

  void AddResultLine(const std::string& line) override;
  void SetProgress(double left) override;

 private:
  void ClearProgress();

  bool quiet_;
  bool draw_progress_;
  int percent_drawn_ = -1;
};

}  // namespace ledrix
