#include "evidence/record_writer.h"

#include <cerrno>
#include <utility>

#include "platform/file_descriptor.h"
#include "platform/files.h"

namespace ledrix {

Result<RecordWriter> RecordWriter::Begin(const NativePath& path) {
  const Result<FileInfo> standing = GetFileInfo(path);
  if (standing.ok()) return Error::System(EEXIST);
  if (!standing.error().IsMissing()) return standing.error();
  Result<Replacement> replacement = Replacement::Begin(path, Replacement::Mode::kOfNewFiles);
  if (!replacement.ok()) return replacement.error();
  RecordWriter writer(std::move(replacement.value()));
  writer.Write("Ledrix 証跡 版 " + std::to_string(kRecordVersion) + "\n");
  return writer;
}

void RecordWriter::Section(std::string_view title) {
  Write("\n[" + std::string(title) + "]\n");
}

void RecordWriter::Line(std::string_view name, std::string_view value) {
  Write(std::string(name) + ": " + ToRecordValue(value) + "\n");
}

Status RecordWriter::Finish() {
  Write("SHA-256: ");
  Flush();
  buffer_ = hash_.Digest() + "\n";
  Flush();
  return failure_.ok() ? replacement_.Commit(true, Replacement::Place::kFree) : failure_;
}

void RecordWriter::Write(std::string_view bytes) {
  constexpr size_t kMost = size_t{1} << 16;
  buffer_ += bytes;
  if (buffer_.size() >= kMost) Flush();
}

void RecordWriter::Flush() {
  hash_.Add(buffer_);
  if (failure_.ok()) failure_ = WriteAll(replacement_.descriptor(), buffer_);
  buffer_.clear();
}

}  // namespace ledrix
