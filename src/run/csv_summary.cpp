#include "run/csv_summary.h"

#include <string>
#include <utility>

#include "text/code_page_932.h"

namespace ledrix {

Status CsvSummary::Open(const NativePath& path, Sha256* hash) {
  path_ = path;
  Result<OutputFile> file = OutputFile::Create(path);
  if (!file.ok()) return file.error();
  file_ = std::move(file.value());
  if (hash != nullptr) file_->HashInto(*hash);
  row_number_ = 0;
  file_->Write("No.,OldFileName,OldStep,NewFileName,NewStep,Rep,Add,Del,Total\r\n");
  return Status();
}

void CsvSummary::WriteCounts(const PairPaths& paths, const CompareCounts& counts) {
  std::string rest = std::to_string(counts.new_lines);
  for (const int64_t count : {counts.changed, counts.added, counts.deleted, counts.total()}) {
    rest += "," + std::to_string(count);
  }
  WriteRow(paths, std::to_string(counts.old_lines), SjisText::FromBytes(std::move(rest)));
}

void CsvSummary::WriteStatus(const PairPaths& paths, std::string_view status) {
  WriteRow(paths, "-", EncodeSjis(status));
}

void CsvSummary::WriteRow(const PairPaths& paths, std::string_view old_lines,
                          const SjisText& rest) {
  if (!file_) return;
  file_->Write(std::to_string(++row_number_));
  file_->Write(",");
  file_->Write(PathToSjis(paths.old_path).bytes());
  file_->Write(",");
  file_->Write(old_lines);
  file_->Write(",");
  file_->Write(PathToSjis(paths.new_path).bytes());
  file_->Write(",");
  file_->Write(rest.bytes());
  file_->Write("\r\n");
}

Status CsvSummary::Close() {
  if (!file_) return Status();
  OutputFile file = std::move(*file_);
  file_.reset();
  Status closed = file.Close();
  if (!closed.ok()) file.Discard();
  return closed;
}

}  // namespace ledrix
