// A job that is run again to see that it does the same.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "run/run_services.h"

namespace ledrix {

// A job without anybody who looks on, at the time of the record.
class RerunPlatform : public PlatformServices {
 public:
  // `stopped` tells that the user wants the end; `trouble` is told what a job shows in a box. All
  // must outlive the object.
  RerunPlatform(PlatformServices& platform, const std::function<bool()>& stopped, JobRecord& job,
                const std::function<void(const std::string&)>& trouble)
      : platform_(platform), stopped_(stopped), job_(job), trouble_(trouble) {}

  MessageAnswer ShowMessage(const Message& message) override {
    trouble_(message.text);
    return message.default_answer;
  }
  void YieldToUi() override {
    platform_.YieldToUi();
    if (stopped_()) job_.StopRequested = true;
  }
  LocalTime Now() override { return now; }

  LocalTime now;

 private:
  PlatformServices& platform_;
  const std::function<bool()>& stopped_;
  JobRecord& job_;
  const std::function<void(const std::string&)>& trouble_;
};

// What a job does when it is run again.
class RerunWitness : public JobWitness {
 public:
  void PairEnded(const PairNote& note) override { pair = note; }
  void OutputWritten(const OutputNote& note) override { outputs.push_back(note); }
  void EntriesTaken(Side side, const EntriesNote& note) override { entries[side] = note; }
  void ClockShown(const LocalTime& /*time*/) override {}

  std::optional<PairNote> pair;
  std::vector<OutputNote> outputs;
  PerSide<std::optional<EntriesNote>> entries;
};

// Everything that runs a job again.
struct RerunJob {
  RerunJob(PlatformServices& outer, const std::function<bool()>& stopped,
           const std::function<void(const std::string&)>& trouble)
      : platform(outer, stopped, job, trouble) {
    services.SetWitness(&witness);
  }

  OptionRecord options;
  JobRecord job;
  RunFrontEnd front_end;
  RerunPlatform platform;
  RerunWitness witness;
  RunServices services{options, job, platform, front_end};
};

}  // namespace ledrix
