// The dialog that names a job, asks for confirmation, runs it and can stop it.
#pragma once

#include <QDialog>
#include <functional>
#include <string>
#include <vector>

#include "jobs/run_loop.h"
#include "run/run_services.h"
#include "ui/window_platform.h"

class QFrame;
class QPushButton;

namespace ledrix {

// The result list as a job sees it.
struct ResultSink {
  std::function<void(const std::vector<std::string>& lines)> add;
  std::function<void()> clear;
  std::function<void(const PairTally&)> pairs_ended;
};

// Runs the job of the record inside exec(), which returns when the job has ended: after a stop the
// dialog is hidden at once, and the job ends by its own rules.
class LedrixF1 : public QDialog, private RunFrontEnd {
 public:
  // All must outlive the dialog.
  LedrixF1(OptionRecord& options, JobRecord& job, WindowPlatform& platform,
           const JobSurroundings& surroundings, const ResultSink& results,
           QWidget* parent = nullptr);
  ~LedrixF1() override;

 protected:
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void reject() override { close(); }

 private:
  class BarLabel;
  class MessageLabel;

  void Build();
  int WidthOfContents() const;
  void ShowState(bool running);
  void Run();
  void AskToStop(MessageAnswer default_answer);
  void Leave();
  void ShowWhatWasTold();
  void FlushResults();

  void AddResultLine(const std::string& line) override { waiting_results_.push_back(line); }
  void ClearResults() override;
  void JobStarted() override;
  void JobEnded() override;
  void SetMessage(const std::string& text) override { message_ = text; }
  void SetBarText(const std::string& text) override { bar_text_ = text; }
  void SetProgress(double left) override { left_ = left; }
  void PairStarted(size_t number, size_t count) override;
  void PairsEnded(const PairTally& tally) override { results_.pairs_ended(tally); }

  OptionRecord& options_;
  JobRecord& job_;
  WindowPlatform& platform_;
  const JobSurroundings& surroundings_;
  const ResultSink& results_;
  RunServices services_;

  BarLabel* const LblBar;
  QFrame* const bar_frame_;    // the whole bar
  QWidget* const PicStsValue;  // slides in from its left
  MessageLabel* const LblMSG;
  QPushButton* const BtnYES;
  QPushButton* const BtnNO;
  QPushButton* const BtnStop;

  // What the job told last, shown at its next yield.
  std::string caption_;
  std::string message_;
  std::string bar_text_;
  double left_ = -kProgressWidth;
  std::vector<std::string> waiting_results_;
  double flush_seconds_ = 0;  // what showing the last results took
  timespec last_flush_{};

  bool started_ = false;
  bool running_ = false;
  bool done_ = false;
  bool asking_ = false;  // a stop question is open
};

}  // namespace ledrix
