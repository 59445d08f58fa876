// The two step count jobs.
//
// Listing of one file, Shift_JIS, CR LF: "--- STEP COUNTER ---" / yyyy/mm/dd hh:mm:ss /
// "File Name  [ " path " ]" / "STEP COUNT [ " #,##0 " ]".
// CSV of a folder, Shift_JIS, CR LF: "DIR［ " folder " ］ " yyyy/mm/dd hh:mm:ss /
// "No.,File Name,STEP COUNT" / then number "," name "," count, the count "-" for a file that
// could not be read; no quoting.
#pragma once

#include "run/file_list.h"
#include "run/run_services.h"

namespace ledrix::modStep {

// Counts OldPath into the listing OutPath.
void StepCntJob(RunServices& services);

// Counts every file of a list, below the folder OldPath, into the CSV file OutPath.
void StepCsvJob(RunServices& services, const FileList& files);

}  // namespace ledrix::modStep
