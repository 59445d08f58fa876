#include "app/console_run.h"

#include <algorithm>

#include "app/console_options.h"
#include "jobs/output_preview.h"
#include "jobs/run_loop.h"
#include "platform/files.h"
#include "platform/program_folder.h"

namespace ledrix {

bool IsMeantAsFolder(const NativePath& path) {
  return path.bytes().ends_with(Separator(kPlatformPathStyle)) || IsFolder(path);
}

bool ConsoleRun::LoadOptions() {
  const auto refused = LoadConsoleOptions(common_, options);
  if (refused) Refuse(*refused);
  return !refused;
}

int ConsoleRun::Refuse(const std::string& text) {
  PrintTrouble(kConsoleProgram, text);
  return kTroubleStatus;
}

void ConsoleRun::AskForEvidence(const EvidenceArguments& evidence) {
  if (evidence.path.empty()) return;
  request.evidence.path = MakeAbsolute(NativePath(evidence.path));
  if (!evidence.sums.empty()) request.evidence.sums_path = MakeAbsolute(NativePath(evidence.sums));
  request.evidence.signed_by = evidence.signed_by;
  request.evidence.command = common_.command_line;
}

int ConsoleRun::Run() {
  BeginJob(job, request);
  if (common_.settings_file == "none" || !keeps_history) {
    RunJob(services_, {sides, nullptr});
  } else {
    RunLog log(ProgramFolder(), platform_);
    RunJob(services_, {sides, &log});
  }
  return static_cast<int>(services_.end());
}

std::vector<NativePath> ConsoleRun::Outputs() const {
  std::vector<NativePath> outputs;
  const std::vector<std::string>& entries = front_end_.entries();
  for (size_t i = 0; i < entries.size(); ++i) {
    NativePath path = OutputOfEntry(entries, i);
    const bool is_known = std::find(outputs.begin(), outputs.end(), path) != outputs.end();
    if (!path.empty() && !is_known) outputs.push_back(std::move(path));
  }
  return outputs;
}

}  // namespace ledrix
