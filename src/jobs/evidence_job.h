// Writes the record of a job while it runs.
#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>

#include "evidence/record_writer.h"
#include "jobs/file_sides.h"
#include "run/run_services.h"

namespace ledrix {

class EvidenceJob : public JobWitness {
 public:
  // Both must outlive the object. The record is the one that the job's request asks for.
  EvidenceJob(RunServices& services, const FileSides& sides) : services_(services), sides_(sides) {}

  // Begins the record; false, and told, when it cannot be written. The job is not to run then.
  bool Begin();
  // Ends the record of a job that has ended; a failure is told and noted as trouble.
  void Finish();

  void PairEnded(const PairNote& pair) override;
  void OutputWritten(const OutputNote& output) override;
  void EntriesTaken(Side side, const EntriesNote& entries) override;
  void ClockShown(const LocalTime& time) override;

 private:
  void WriteHead();
  void WriteOptions();
  void WriteInput(const std::string& side, const InputNote& input);
  void WriteCounts(const PairNote& pair);
  void WriteOutput(const OutputNote& output);
  void WriteLeftOut();
  void AddSum(const NativePath& path, const std::string& sha256);
  Status WriteSums() const;
  void Fail(const NativePath& path, const Error& error);

  RunServices& services_;
  const FileSides& sides_;
  std::optional<RecordWriter> writer_;
  std::vector<OutputNote> outputs_;  // of the whole job
  std::optional<LocalTime> clock_;   // that they show
  std::map<std::string, std::string> sums_;
  int64_t pairs_ = 0;
  std::array<int64_t, 6> ends_{};  // by PairEnd
};

// The name of a record beside the outputs of a job that begins at `now`:
// "LEDRIX_yyyymmdd_hhmmss.EVD.TXT", the next free one when something stands there.
NativePath FreeRecordPath(const NativePath& folder, const LocalTime& now);

}  // namespace ledrix
