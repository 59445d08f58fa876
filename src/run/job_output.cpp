#include "run/job_output.h"

#include <utility>

#include "platform/fixed_width.h"
#include "platform/output_guard.h"

namespace ledrix {

Status JobOutput::RefuseInput() const {
  return RefuseOutput(path(), inputs_, {});
}

Status JobOutput::Create() {
  if (Status refused = RefuseInput(); !refused.ok()) return refused;
  Result<OutputFile> file = OutputFile::Create(path());
  if (file.ok()) {
    file_ = std::move(file.value());
    if (services_.witness() != nullptr) file_->HashInto(hash_);
  }
  return file.status();
}

std::optional<FileInfo> JobOutput::Identity() const {
  const Result<FileInfo> info = GetFileInfo(path());
  if (!file_ || !info.ok()) return std::nullopt;
  return info.value();
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
  if (file_ && closed.ok() && services_.witness() != nullptr) {
    services_.witness()->OutputWritten({"出力", path(), hash_.size(), hash_.Digest()});
  }
  file_.reset();
  services_.AddResultLines(path(), closed.ok() ? result : PairEndText(PairEnd::kFailed));
}

void JobOutput::Abandon(PairEnd end) {
  if (file_) {
    file_->Discard();
    file_.reset();
  } else if (RefuseInput().ok()) {
    // Through a link the file itself is removed and not the link.
    RemoveFile(RealPath(path())).Ignore();
  }
  services_.NoteEnd(JobEnd::kTrouble);
  services_.AddResultLines(path(), PairEndText(end));
}

}  // namespace ledrix
