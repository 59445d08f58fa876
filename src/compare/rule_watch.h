// Finds the lines that a compare takes as unchanged although they differ.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "charset/conversion_loss.h"
#include "compare/difference.h"
#include "run/job_witness.h"
#include "text/text_arena.h"

namespace ledrix::modComp {

// Hands every decision on and looks at the unchanged lines on the way. Lines of equal bytes cost
// one comparison each, or nothing where they are taken as a whole.
class RuleWatch : public DecisionWriter {
 public:
  // Everything must outlive the watch. `old_folded` and `new_folded` tell of the characters that
  // the two texts hold under another one's code.
  RuleWatch(DecisionWriter& writer, const LineRing& old_ring, const LineRing& new_ring,
            const CompareOptions& options, const FoldedLines& old_folded,
            const FoldedLines& new_folded, EqualByRule& found);

  void WriteUnchanged() override;
  void WriteChanged() override { writer_.WriteChanged(); }
  void WriteAdded() override { writer_.WriteAdded(); }
  void WriteDeleted() override { writer_.WriteDeleted(); }
  bool TakesUnchangedRuns() const override { return writer_.TakesUnchangedRuns(); }
  void WriteUnchangedRun(LineIndex lines) override;

 private:
  // The options with one rule switched off.
  struct WithoutRule {
    EqualityRule rule;
    CompareOptions options;
  };
  // One side's folded lines, walked along with the compare.
  struct Walk {
    const FoldedLines& lines;
    size_t next = 0;

    // The digest of a line, 0 where nothing is folded. REQUIRES: lines are asked for in order.
    uint64_t DigestAt(LineIndex line);
    // The first folded line from one on, or the greatest index.
    LineIndex NextFrom(LineIndex line);
  };

  void Count(LineIndex old_line, LineIndex new_line);
  SjisView KeyUnder(const CompareOptions& options, SjisView line);

  DecisionWriter& writer_;
  const LineRing& old_;
  const LineRing& new_;
  std::vector<WithoutRule> rules_;
  Walk old_walk_;
  Walk new_walk_;
  EqualByRule& found_;
  TextArena arena_;
};

}  // namespace ledrix::modComp
