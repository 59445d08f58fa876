// Writes a record while its job runs; what is written has no name before it is whole.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "evidence/record.h"
#include "platform/replacement.h"
#include "platform/sha256.h"

namespace ledrix {

class RecordWriter {
 public:
  // Begins a record that will stand at `path`. Returns why it cannot, EEXIST for a path at which
  // something stands.
  static Result<RecordWriter> Begin(const NativePath& path);

  void Section(std::string_view title);
  void Line(std::string_view name, std::string_view value);
  void Line(std::string_view name, int64_t number) { Line(name, std::to_string(number)); }

  // Writes the digest and puts the record, synced, under its name, or under another one when
  // something stands there by now.
  Status Finish();
  // The same under another name.
  void Rename(NativePath path) { replacement_.Rename(std::move(path)); }

 private:
  explicit RecordWriter(Replacement replacement) : replacement_(std::move(replacement)) {}
  void Write(std::string_view bytes);
  void Flush();

  Replacement replacement_;
  Sha256 hash_;
  std::string buffer_;
  Status failure_;
};

}  // namespace ledrix
