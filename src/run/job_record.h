// The one description of the current job: what was asked for, what is being worked on, and the
// live state that engines and front end share.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/files.h"
#include "platform/native_path.h"
#include "run/job_witness.h"
#include "run/output_claims.h"
#include "run/side.h"

namespace ledrix {

enum class JobKind { kComp, kStepCnt, kStepCsv, kDirEdit, kDirComp };

// Where the outputs of a text compare go.
enum class OutputDirMode {
  kOldDir,    // the old file's folder
  kNewDir,    // the new file's folder
  kElse,      // ElseOutputDir
  kConstant,  // the option ContOutDirPath
};

// What of a path belongs to the key of an entry in a directory compare.
enum class CompareRange { kFullPath, kCurrentPath, kNoPath };

// When the skip rule, if its option is on, leaves a pair out.
enum class SkipRule {
  kSameStamp,     // the files have the same size and time
  kSameContents,  // and the same bytes
};

// The outputs that text compares are to have; the choice stays from job to job.
struct OutputChoices {
  bool OptSbnList = false;  // write the difference file
  bool OptCsvList = false;  // write the CSV summary
  bool OptMrgSrc = false;   // write the merge source
  bool MergeMarks = false;  // the merge source tells where each line comes from
  enum OutputDirMode OutputDirMode = OutputDirMode::kOldDir;
  NativePath ElseOutputDir;
};

// The record that is to prove what a job did; it is written only when a path is given.
struct EvidenceRequest {
  NativePath path;
  NativePath sums_path;   // a file for sha256sum, or empty
  std::string signed_by;  // who answers for it, in his own words, or empty
  std::string command;    // what started the job
};

// How a job is run again from its record: nothing of it is shown under the names and times that the
// files have by now, and nothing is written beside the inputs.
struct Rerun {
  PerSide<ShownFile> shown;  // instead of what the files are called, and when they were modified
  FileSet no_entries;        // files that had not been there
};

// What is asked of a job; no engine changes it. Paths are absolute.
struct JobRequest {
  enum JobKind JobKind = JobKind::kComp;
  NativePath OldPath;  // in a multiple compare the first pair's
  NativePath NewPath;
  // The one output of a job that has one. A text compare names its own outputs, but when this is
  // not empty the listing of a single compare goes exactly there; the other outputs keep the names
  // and the folder that the rules give them.
  NativePath OutPath;
  // "Comp": selected files of the old list; "StepCSV": entries of the side's list.
  int64_t FileCount = 1;
  bool IsMultiple = false;  // a multiple compare although only one pair is selected
  Side ActiveSide = Side::kOld;
  enum CompareRange CompareRange = CompareRange::kFullPath;
  EvidenceRequest evidence;
  PerSide<std::string> labels;  // UTF-8, what a compare of two files calls them; empty: their paths
  PerSide<int64_t> subfolders{-1, -1};  // that a compare of folders leaves out; -1: not counted
};

// The outputs of one pair.
struct OutputNames {
  NativePath OutPath;  // the listing, or the job's one output
  NativePath SbnPath;  // difference file; empty when not wanted
  NativePath MrgPath;  // merge source; empty when not wanted
};

// The inputs and outputs that are being worked on: those of the job, or of one of its pairs.
struct JobFiles : OutputNames {
  NativePath OldPath;
  NativePath NewPath;
};

// What was left open of the character code of a pair, the first of the job: what the user was told,
// and the charset beside Shift_JIS, as which it was read. Empty when nothing was.
struct OpenJudgement {
  std::string text;
  std::string other_charset;
};

struct JobRecord {
  OutputChoices outputs;
  JobRequest request;
  JobFiles files;

  // Live state of the job.
  bool StopRequested = false;  // set by the front end while the job yields to it
  FileSet ProtectedFiles;      // no output of the job may overwrite them, whatever pair is next
  OutputClaims claims;         // the outputs of the pairs so far
  OpenJudgement open_judgement;
  std::optional<Rerun> rerun;

  // Of the whole run.
  int16_t RunCounter = 0;  // number of the last result entry; stays at 32767 once there
  bool GuiMode = false;    // a result list and a progress bar exist
  bool DebugLog = false;
  SkipRule skip_rule = SkipRule::kSameStamp;
};

// Makes the record describe a new job; every job begins here.
inline void BeginJob(JobRecord& job, JobRequest request) {
  job.files = {};
  job.files.OldPath = request.OldPath;
  job.files.NewPath = request.NewPath;
  job.files.OutPath = request.OutPath;
  job.request = std::move(request);
  job.StopRequested = false;
  job.ProtectedFiles = {};
  job.claims = {};
  job.open_judgement = {};
  job.rerun.reset();
}

}  // namespace ledrix
