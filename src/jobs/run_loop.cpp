#include "jobs/run_loop.h"

#include "compare/pair_driver.h"
#include "jobs/output_names.h"
#include "platform/output_guard.h"

namespace ledrix {
namespace {

// Opening the summary empties it, so it must be none of the files that the job reads and writes.
bool CsvSummaryIsSafe(RunServices& services) {
  JobRecord& job = services.job();
  const Status refused = RefuseOutput(job.CsvPath, {job.OldPath, job.NewPath},
                                      {job.OutPath, job.SbnPath, job.MrgPath});
  if (!refused) return true;
  services.platform().ShowMessage(
      {DescribeError(*refused) + "\r\n" + PathToUtf8(job.CsvPath), "CSV File Open Error"});
  services.NoteEnd(JobEnd::kTrouble);
  return false;
}

void RunSingleCompare(RunServices& services) {
  JobRecord& job = services.job();
  job.OutPath = MakeOutputNames(services.options(), job, job.OldPath, job.NewPath);
  if (!job.ListingPath.empty()) job.OutPath = job.ListingPath;
  if (!job.OptCsvList) {
    modComp::ComparePair(services);
    return;
  }
  job.CsvPath = services.CsvSummaryPath(job.OutPath);
  if (!CsvSummaryIsSafe(services) || !services.OpenCsvSummary()) return;
  modComp::ComparePair(services);
  services.CloseCsvSummary(job.FileCount);
}

}  // namespace

void RunJob(RunServices& services) {
  RunSingleCompare(services);
}

}  // namespace ledrix
