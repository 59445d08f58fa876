// The services through which every engine reports: the result list, the progress bar, the
// exclusion test and the CSV summary of a text compare.
#pragma once

#include <string>
#include <string_view>

#include "platform/services.h"
#include "run/csv_summary.h"
#include "run/job_record.h"
#include "run/job_witness.h"
#include "run/pair_result.h"
#include "settings/option_record.h"
#include "text/name_pattern.h"

namespace ledrix {

// Units of the whole progress bar.
inline constexpr double kProgressWidth = 5655;

// What a job tells the window or terminal that runs it. Texts are UTF-8, lines in a label are
// separated by "\r". There is one thread.
class RunFrontEnd {
 public:
  RunFrontEnd() = default;
  RunFrontEnd(const RunFrontEnd&) = delete;
  RunFrontEnd& operator=(const RunFrontEnd&) = delete;
  virtual ~RunFrontEnd() = default;

  // One more line of the result list. A line that opens with "(" carries an output's path in the
  // file system's own bytes, from its fifteenth character on.
  virtual void AddResultLine(const std::string& /*line*/) {}
  // The result list is emptied.
  virtual void ClearResults() {}
  // The job has begun to run; it has ended, or is being ended.
  virtual void JobStarted() {}
  virtual void JobEnded() {}
  // The text of the message label.
  virtual void SetMessage(const std::string& /*text*/) {}
  // The text beside the progress bar.
  virtual void SetBarText(const std::string& /*text*/) {}
  // The left edge of the progress bar, from -kProgressWidth (nothing shown) to 0 (all of it).
  virtual void SetProgress(double /*left*/) {}
  // A multiple compare begins with a pair, counted from 1, of `count`; it has ended, all pairs or
  // not.
  virtual void PairStarted(size_t /*number*/, size_t /*count*/) {}
  virtual void PairsEnded(const PairTally& /*tally*/) {}
};

// How a job ended, worst last; the console's exit status by number.
enum class JobEnd { kNoDifference = 0, kDifference = 1, kTrouble = 2 };

class RunServices {
 public:
  // All four must outlive the services.
  RunServices(OptionRecord& options, JobRecord& job, PlatformServices& platform,
              RunFrontEnd& front_end)
      : options_(options), job_(job), platform_(platform), front_end_(front_end) {}

  OptionRecord& options() { return options_; }
  JobRecord& job() { return job_; }
  PlatformServices& platform() { return platform_; }
  RunFrontEnd& front_end() { return front_end_; }

  // Who is told what the job does; usually nobody.
  JobWitness* witness() { return witness_; }
  void SetWitness(JobWitness* witness) { witness_ = witness; }

  // Adds an output's two lines to the result list: its number, the job's label and its path, then
  // the message. Without a result list only the number is used up.
  void AddResultLines(const NativePath& path, std::string_view message);

  // Moves the progress bar to `count` units of work, each `unit_width` wide (kProgressWidth is
  // the whole bar).
  void UpdateProgress(double unit_width, double count);

  // Shows a text on the message label.
  void SetMessage(const std::string& text);
  const std::string& message_text() const { return message_text_; }

  // Shows a text beside the progress bar; SetBarText lets the user interface act as well.
  void ShowBarText(const std::string& text);
  void SetBarText(const std::string& text);
  const std::string& bar_text() const { return bar_text_; }

  // Lets the user interface act; true when the job is to stop.
  bool YieldAndAskStop() {
    platform_.YieldToUi();
    return job_.StopRequested;
  }

  // True when a multiple compare leaves out the pair of this name.
  bool IsExcludedType(std::string_view name);

  // The summary of a text compare. Opened into the listing's folder; when that fails the user is
  // told and OpenCsvSummary returns false.
  NativePath CsvSummaryPath(const NativePath& listing) const;
  bool OpenCsvSummary(const NativePath& path);
  const CsvSummary& csv() const { return csv_; }
  // Closes the summary and reports it with the number of selected files.
  void CloseCsvSummary(int64_t count);
  // Closes the summary of a job that was stopped; its rows stay, nothing is reported.
  void AbandonCsvSummary();
  void WriteCsvCounts(const PairPaths& paths, const CompareCounts& counts) {
    csv_.WriteCounts(paths, counts);
  }
  // Written only when the option CsvStatus is on.
  void WriteCsvStatus(const PairPaths& paths, std::string_view status);

  void NoteEnd(JobEnd end) {
    if (end > end_) end_ = end;
  }
  JobEnd end() const { return end_; }

  // Tells that characters of a file became "?", first in the line `first_line` (from 1).
  void ReportLoss(const NativePath& path, uint64_t count, uint64_t first_line);
  // Tells of all such characters together; nothing when there were none.
  void ReportTotalLoss();

  // Tells of a file that could not be read or written to the end, and notes the trouble.
  void ReportFileTrouble(const NativePath& path, const Error& error);

 private:
  // Closes the summary; false, and told, when it could not be written.
  bool FinishCsvFile();

  OptionRecord& options_;
  JobRecord& job_;
  PlatformServices& platform_;
  RunFrontEnd& front_end_;
  JobWitness* witness_ = nullptr;
  Sha256 csv_hash_;  // for the witness
  CsvSummary csv_;
  // The patterns of NoPattern, read when the option was last looked at.
  std::string excluded_text_;
  PatternList excluded_{"", LetterCase::kIgnore};
  std::string message_text_;
  std::string bar_text_;
  JobEnd end_ = JobEnd::kNoDifference;
  uint64_t lost_characters_ = 0;
};

// A decimal number right-aligned in `width` characters; a longer one keeps only its first.
std::string RightAligned(std::string number, size_t width);

}  // namespace ledrix
