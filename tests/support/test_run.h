// A run of the program without a front end: everything it would tell somebody is recorded.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "jobs/run_loop.h"
#include "run/run_services.h"
#include "support/test_files.h"
#include "text/ascii.h"

namespace ledrix::test {

class RecordingPlatform : public PlatformServices {
 public:
  explicit RecordingPlatform(JobRecord& job) : job_(job) {}

  MessageAnswer ShowMessage(const Message& message) override {
    messages.push_back(message.title + ": " + message.text);
    return message.default_answer;
  }
  void ReportTrouble(const std::string& line) override { troubles.push_back(line); }
  void YieldToUi() override {
    if (++yields == stop_at_yield) job_.StopRequested = true;
    if (at_yield) at_yield(yields);
  }
  LocalTime Now() override { return ToLocalTime({kTestTime, 0}); }

  std::vector<std::string> messages;  // "TITLE: TEXT"
  std::vector<std::string> troubles;
  int yields = 0;
  int stop_at_yield = 0;              // 0: never
  std::function<void(int)> at_yield;  // called with the number of the yield, from 1

 private:
  JobRecord& job_;
};

class RecordingFrontEnd : public RunFrontEnd {
 public:
  void AddResultLine(const std::string& line) override { results.push_back(line); }
  void ClearResults() override { results.clear(); }
  void SetProgress(double left) override { progress.push_back(left); }
  void SetMessage(const std::string& text) override { messages.push_back(text); }
  void SetBarText(const std::string& text) override { bar_texts.push_back(text); }

  std::vector<std::string> results;
  std::vector<double> progress;
  std::vector<std::string> messages;
  std::vector<std::string> bar_texts;
};

// Sets options written as KEY=VALUE and joined by "|".
inline void ApplySettings(OptionRecord& options, std::string_view settings) {
  for (const std::string& setting : SplitAt(settings, '|')) {
    const size_t equals = setting.find('=');
    if (equals == std::string::npos) continue;
    FindOptionField(setting.substr(0, equals))->Set(options, setting.substr(equals + 1));
  }
}

// Everything of one run, with the options at their defaults.
struct TestRun {
  OptionRecord options;
  JobRecord job;
  JobRequest request;
  RecordingPlatform platform{job};
  RecordingFrontEnd front_end;
  RunServices services{options, job, platform, front_end};

  FileSides sides;
  RunLog* log = nullptr;

  TestRun() { job.GuiMode = true; }
  void Run() {
    BeginJob(job, request);
    RunJob(services, {sides, log});
  }
  // Sets an option by its key, as the settings store does.
  void Set(std::string_view key, std::string_view value) {
    FindOptionField(key)->Set(options, value);
  }
  // Sets options written as KEY=VALUE and joined by "|".
  void SetAll(std::string_view settings) { ApplySettings(options, settings); }
};

}  // namespace ledrix::test
