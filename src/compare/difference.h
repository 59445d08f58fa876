// Decides line by line what is unchanged, changed, added and deleted.
#pragma once

#include <optional>

#include "compare/line_ring.h"
#include "compare/resync_search.h"

namespace ledrix::modComp {

// Takes each decision about the current lines of the two rings, before they advance.
class DecisionWriter {
 public:
  DecisionWriter() = default;
  DecisionWriter(const DecisionWriter&) = delete;
  DecisionWriter& operator=(const DecisionWriter&) = delete;
  virtual ~DecisionWriter() = default;

  virtual void WriteUnchanged() = 0;  // the two current lines are equal
  virtual void WriteChanged() = 0;    // the old line became the new line
  virtual void WriteAdded() = 0;      // the new line
  virtual void WriteDeleted() = 0;    // the old line

  // True when of further unchanged lines only their number counts, whatever they hold.
  virtual bool TakesUnchangedRuns() const { return false; }
  // Takes so many more unchanged pairs, those behind the current lines. REQUIRES:
  // TakesUnchangedRuns().
  virtual void WriteUnchangedRun(LineIndex /*lines*/) {}
};

class Difference {
 public:
  // Everything must outlive the object.
  Difference(LineRing& old_ring, LineRing& new_ring, const CompareOptions& options,
             DecisionWriter& writer, const CompareTuning& tuning = {})
      : old_(old_ring), new_(new_ring), options_(options), writer_(writer), tuning_(tuning) {}

  // Reads the first line of each side.
  void Start() {
    old_.AdvanceSide();
    new_.AdvanceSide();
  }

  // True when both files are used up.
  bool finished() const { return old_.at_end() && new_.at_end(); }

  // Makes one decision at the two current lines, writes it and advances past it. REQUIRES:
  // Start() was called and !finished().
  void CompareStep();

 private:
  void SkipEqualLines();
  void AddLines(LineIndex count);
  void DeleteLines(LineIndex count);
  void Resynchronise();
  void AdvanceBoth() {
    old_.AdvanceSide();
    new_.AdvanceSide();
  }

  LineRing& old_;
  LineRing& new_;
  const CompareOptions& options_;
  std::optional<ResyncSearch> search_;  // made at the first two lines that differ
  DecisionWriter& writer_;
  const CompareTuning tuning_;
  LineIndex equal_lines_ = 0;  // unchanged pairs since the last difference
  LineIndex next_skip_ =
      tuning_.pairs_before_skip;  // so many are worth a look at the bytes behind them
};

}  // namespace ledrix::modComp
