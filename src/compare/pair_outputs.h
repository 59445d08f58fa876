// The outputs of one pair: the listing, and the difference file and the merge source on request.
// They are claimed for the pair, created, and either closed whole or removed.
#pragma once

#include <optional>
#include <vector>

#include "compare/side_outputs.h"
#include "platform/error.h"
#include "platform/output_file.h"
#include "run/run_services.h"
#include "settings/compare_options.h"

namespace ledrix::modComp {

// Why an output cannot be written, and the title of the message that tells it.
struct OutputFailure {
  const char* title;
  Error error;
  NativePath path;
};

class PairOutputs {
 public:
  // The paths are those of the record when this object is made.
  PairOutputs(RunServices& services, const CompareOptions& options);

  // REQUIRES: Create() succeeded and RemoveUnwanted() did not drop it.
  OutputFile& listing() { return *listing_; }
  SideOutputs& sides() { return sides_; }

  // Refuses outputs that are inputs or each other, or that an earlier pair of the job has written.
  std::optional<OutputFailure> Claim();
  // Creates the files that are wanted.
  std::optional<OutputFailure> Create();
  // True when a write has failed.
  bool Failed() const;

  // What was written and stands, once it is closed; only while a witness wants to know.
  std::vector<OutputNote> Written();

  // Closes every output; when one fails all are removed, the file is told and false returned.
  bool Close();
  // Removes what was created.
  void Discard();
  // Drops the listing and the difference file of a pair without a change.
  void Drop();
  // Removes the listing that stands under this pair's name, whoever wrote it.
  void RemoveListing();
  // A listing or difference file of an earlier run must not pass for this pair's when it failed or
  // was stopped before it opened its own.
  void RemoveEarlier();

 private:
  std::optional<OutputFailure> CreateOne(const NativePath& path, const char* title,
                                         std::optional<OutputFile>& file, Sha256& hash,
                                         Result<OutputFile> (*create)(const NativePath&));
  std::vector<OutputFile*> Files();
  // True for an output that is no input, and that no other pair has written.
  bool IsNobodyElses(const NativePath& output) const;
  void Remove(const NativePath& path);
  // The CSV summary, when there is one: no output of a pair may be it.
  std::vector<NativePath> OtherOutputs() const;

  RunServices& services_;
  JobRecord& job_;
  const OutputNames names_;
  const std::vector<NativePath> inputs_;
  const bool drops_unchanged_;
  std::optional<OutputFile> listing_;
  SideOutputs sides_;
  bool is_claimed_ = false;
  Sha256 hashes_[3];  // of the listing, the difference file and the merge source
};

}  // namespace ledrix::modComp
