// The one output of a job that has one: a step count, a directory information file, the listing of
// a directory compare.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/files.h"
#include "platform/output_file.h"
#include "run/pair_result.h"
#include "run/run_services.h"
#include "text/sjis_text.h"

namespace ledrix {

class JobOutput {
 public:
  // The output is the record's OutPath, which must be none of `inputs`. `services` must outlive
  // this object.
  explicit JobOutput(RunServices& services, std::vector<NativePath> inputs = {})
      : services_(services), inputs_(std::move(inputs)) {}

  const NativePath& path() const { return services_.job().files.OutPath; }

  // Creates the file, or empties an existing one, unless it is one of the inputs.
  Status Create();

  // The file itself, by which a walk knows it under any name; nothing when it was not created.
  std::optional<FileInfo> Identity() const;

  // The file that is open for writing. REQUIRES: Create() succeeded, Finish() was not called.
  OutputFile& file() { return *file_; }

  // Writes a text with CR LF; without a file it is dropped.
  void WriteLine(SjisView text);

  // Closes the file and adds the job's result entry. What could not be written to its end is
  // removed and reads "エラー". Without a file only the entry is added.
  void Finish(const std::string& result);

  // Ends a job that failed or was stopped and has no result: removes the file, also one that an
  // earlier run left, unless it is an input or no regular file; adds `end` as the job's result
  // entry and notes the trouble.
  void Abandon(PairEnd end);

 private:
  Status RefuseInput() const;

  RunServices& services_;
  const std::vector<NativePath> inputs_;
  std::optional<OutputFile> file_;
  Sha256 hash_;  // for the witness
};

}  // namespace ledrix
