// The one output of a job that has one: a step count, a directory information file, the listing of
// a directory compare.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/files.h"
#include "run/run_services.h"
#include "text/sjis_text.h"

namespace ledrix {

class JobOutput {
 public:
  // The output is the record's OutPath. `services` must outlive this object.
  explicit JobOutput(RunServices& services) : services_(services) {}

  const NativePath& path() const { return services_.job().files.OutPath; }

  // Creates the file, or empties an existing one, unless it is one of the inputs.
  Status Create(const std::vector<NativePath>& inputs);

  // The file that is open for writing. REQUIRES: Create() succeeded, Finish() was not called.
  OutputFile& file() { return *file_; }

  // Writes a text with CR LF; without a file it is dropped.
  void WriteLine(SjisView text);

  // Closes the file and adds the job's result entry. What could not be written to its end is
  // removed and reads "エラー". Without a file only the entry is added.
  void Finish(const std::string& result);

 private:
  RunServices& services_;
  std::optional<OutputFile> file_;
};

}  // namespace ledrix
