// A terminal in place of a desktop: messages go to stderr, signals stop the job.
#pragma once

#include <optional>
#include <string>

#include "platform/services.h"
#include "run/run_services.h"

namespace ledrix {

// How to go on when the user's settings cannot be read.
inline constexpr const char* kWithoutSettings =
    "ファイルを別の場所に移すか、ledrixc --settings none を使用してください";

// Writes "PROGRAM: TEXT" as one line to stderr; line breaks become " / ".
void PrintTrouble(const char* program, const std::string& text);

// Why nothing can be written where "--out" says: the folder is not there. Nothing when `out` is
// empty, too.
std::optional<std::string> RefuseMissingFolder(const std::string& out);

class ConsolePlatform : public PlatformServices {
 public:
  // `program` names the program before each line; `job` is told to stop. Both must outlive the
  // object.
  ConsolePlatform(const char* program, JobRecord& job) : program_(program), job_(job) {}

  // Returns the default button.
  MessageAnswer ShowMessage(const Message& message) override;
  void ReportTrouble(const std::string& line) override;
  void YieldToUi() override;

 private:
  const char* program_;
  JobRecord& job_;
};

}  // namespace ledrix
