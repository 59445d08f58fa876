#include "run/job_output.h"

#include <utility>

#include "platform/fixed_width.h"
#include "platform/output_guard.h"

namespace ledrix {

Status JobOutput::Create(const std::vector<NativePath>& inputs) {
  if (Status refused = RefuseOutput(path(), inputs, {}); !refused.ok()) return refused;
  Result<OutputFile> file = OutputFile::Create(path());
  if (file.ok()) file_ = std::move(file.value());
  return file.status();
}

void JobOutput::WriteLine(SjisView text) {
  if (file_) ledrix::WriteLine(*file_, text);
}

void JobOutput::Finish(const std::string& result) {
  const Status closed = file_ ? file_->Close() : Status();
  if (!closed.ok()) {
    file_->Discard();
    services_.ReportFileTrouble(path(), closed.error());
  }
  file_.reset();
  services_.AddResultLines(path(), closed.ok() ? result : PairEndText(PairEnd::kFailed));
}

}  // namespace ledrix
