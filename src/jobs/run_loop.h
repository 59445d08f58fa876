// Runs the job that the job record describes, of any kind, from its first status text to the run
// log.
#pragma once

#include <string>

#include "jobs/file_sides.h"
#include "jobs/run_log.h"
#include "run/run_services.h"

namespace ledrix {

// What a job uses beside the job record.
struct JobSurroundings {
  // The two sides as the user sees them: the selected files of a multiple compare, the list of a
  // step count into CSV, the filter of a directory compare.
  const FileSides& sides;
  // Where the folders of the job are recorded; null when nothing may be written but the outputs.
  RunLog* log;
};

// Runs the job. How it ended stands in the services afterwards.
void RunJob(RunServices& services, const JobSurroundings& surroundings);

// What the dialog tells of a job before it runs: its caption, and its message with lines
// separated by "\r". Nothing is changed.
std::string JobCaption(const JobRequest& request);
std::string JobMessage(const OptionRecord& options, const JobRecord& job);

// A side of a directory compare: a directory information file as it is, the folder of any other
// path.
NativePath DirCompareSide(const NativePath& path, const OptionRecord& options);

}  // namespace ledrix
