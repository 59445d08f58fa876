// What a job shows on a terminal.
#pragma once

#include <string>
#include <vector>

#include "run/run_services.h"

namespace ledrix {

inline constexpr const char* kConsoleProgram = "ledrixc";

// Prints the result list on standard output and, on a terminal, the progress bar on stderr.
class ConsoleFrontEnd : public RunFrontEnd {
 public:
  ConsoleFrontEnd(bool quiet, bool progress);
  ~ConsoleFrontEnd() override { ClearProgress(); }

  // The entries so far, printed or not.
  const std::vector<std::string>& entries() const { return entries_; }

  void AddResultLine(const std::string& line) override;
  void SetProgress(double left) override;
  void SetMessage(const std::string& text) override;
  void SetBarText(const std::string& text) override;

 private:
  void Draw();
  void ClearProgress();

  std::vector<std::string> entries_;
  bool quiet_;
  bool draw_progress_;
  int percent_ = 0;
  std::string message_;  // its last line
  std::string bar_text_;
  std::string drawn_;
};

}  // namespace ledrix
