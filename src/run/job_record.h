// The one description of the current job, filled before it runs and read by every engine.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/files.h"
#include "platform/native_path.h"

namespace ledrix {

enum class JobKind { kComp, kStepCnt, kStepCsv, kDirEdit, kDirComp };

// Where the outputs of a text compare go.
enum class OutputDirMode {
  kOldDir,    // the old file's folder
  kNewDir,    // the new file's folder
  kElse,      // ElseOutputDir
  kConstant,  // the option ContOutDirPath
};

struct JobRecord {
  enum JobKind JobKind = JobKind::kComp;

  // Inputs and outputs, all absolute. In a multiple compare they are rewritten for every pair.
  NativePath OldPath;
  NativePath NewPath;
  NativePath OutPath;  // the listing, or the job's one output
  NativePath SbnPath;  // difference file; empty when not wanted
  NativePath MrgPath;  // merge source; empty when not wanted

  NativePath CsvPath;  // CSV summary
  std::optional<OutputFile> CsvFile;
  int64_t CsvRowNo = 0;  // number of the last row written

  // "Comp": selected files of the old list; "StepCSV": entries of the side's list.
  int64_t FileCount = 0;
  // A multiple compare although only one pair is selected.
  bool IsMultiple = false;
  // Files that no output of the job may overwrite, beside those of the pair.
  FileSet ProtectedFiles;
  int CompareRange = 0;  // 0 full path, 1 current path, 2 no path

  bool OptSbnList = false;  // write the difference file
  bool OptCsvList = false;  // write the CSV summary
  bool OptMrgSrc = false;   // write the merge source
  enum OutputDirMode OutputDirMode = OutputDirMode::kOldDir;
  NativePath ElseOutputDir;
  // When not empty, the listing of a single compare goes exactly there; the other outputs keep
  // the names and the folder that the rules above give them.
  NativePath ListingPath;

  int ActiveSide = 0;          // 0 old, 1 new
  bool StopRequested = false;  // set by the front end while the job yields to it
  int16_t RunCounter = 0;      // number of the last result entry; stays at 32767 once there
  bool GuiMode = false;        // a result list and a progress bar exist

  // Switches of the whole run.
  bool MergeMarks = false;  // the merge source tells where each line comes from
  bool DebugLog = false;
};

}  // namespace ledrix
