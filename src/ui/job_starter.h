// How the main window describes jobs and has them run.
#pragma once

#include <functional>

#include "run/job_record.h"
#include "run/pair_result.h"
#include "ui/choosers.h"
#include "ui/side_pair.h"
#include "ui/window_program.h"

namespace ledrix {

class ResultList;
class RunLog;

// Each Start fills the job record from the two sides, asks for what else the job needs, and returns
// when the job has ended, or at once with a message when it cannot be. Sides are 0 old, 1 new.
class JobStarter {
 public:
  struct Hooks {
    std::function<void()> about_to_run;
    std::function<void(const PairTally&)> pairs_ended;  // of a multiple compare
    std::function<void()> has_run;
  };
  // Dialogs open above `window`. All must outlive this.
  JobStarter(QWidget& window, const WindowProgram& program, const SidePair& sides,
             ResultList& results, RunLog& log, Hooks hooks)
      : window_(window),
        program_(program),
        sides_(sides),
        results_(results),
        log_(log),
        hooks_(std::move(hooks)),
        chooser_(program.folder) {}

  void StartTextCompare();
  void StartDirCompare(CompareRange range);
  void StartDirEdit(Side side, const NativePath& folder);
  // Of the selected file of a side.
  void StartStepCount(Side side);
  // Of the files of a side's highlighted folder, as the list shows them when it is the open one.
  void StartStepCsv(Side side);

  // Of the records that the user chooses; what is found goes into the result list.
  void StartVerification();

  // True inside a Start whose job runs; it uses the window until it returns.
  bool is_running() const { return running_; }

 private:
  // Offers the other charset of a pair whose code was left open.
  void RunJobOf(const JobRequest& request, const FileSides& sides);
  void RunOnce(JobRequest request, const FileSides& sides);
  void AskForEvidence(JobRequest& request) const;

  QWidget& window_;
  const WindowProgram& program_;
  const SidePair sides_;
  ResultList& results_;
  RunLog& log_;
  const Hooks hooks_;
  OutputChooser chooser_;
  bool running_ = false;
};

// Whether every job leaves a record beside its outputs, which the settings keep.
bool WritesEvidence(const SettingsStore& store);
void SetWritesEvidence(SettingsStore& store, bool on);

}  // namespace ledrix
