#include "compare/difference.h"

#include <algorithm>

namespace ledrix::modComp {

void Difference::CompareStep() {
  if (old_.at_end()) {
    AddLines(1);
  } else if (new_.at_end()) {
    DeleteLines(1);
  } else if (LineRing::SameLine(old_, old_.current(), new_, new_.current())) {
    writer_.WriteUnchanged();
    if (++equal_lines_ >= next_skip_ && writer_.TakesUnchangedRuns()) SkipEqualLines();
    AdvanceBoth();
  } else {
    equal_lines_ = 0;
    next_skip_ = tuning_.pairs_before_skip;
    Resynchronise();
  }
}

// Equal bytes are equal lines under every option, so whole blocks of two files in step need not be
// cut into keys.
void Difference::SkipEqualLines() {
  // Lines that are read again are paid for by those that have been equal before.
  const LineIndex ahead = std::max(old_.lines_ahead(), new_.lines_ahead());
  if (ahead > equal_lines_ || !old_.DropAhead() || !new_.DropAhead()) {
    next_skip_ = equal_lines_ + tuning_.pairs_before_skip;
    return;
  }
  const EqualLines equal = LineRing::FindEqualAhead(old_, new_);
  if (equal.lines == 0) {
    next_skip_ = equal_lines_ + tuning_.pairs_before_skip;
    return;
  }
  writer_.WriteUnchangedRun(equal.lines);
  old_.AdvanceOver(equal);
  new_.AdvanceOver(equal);
  equal_lines_ += equal.lines;
}

void Difference::Resynchronise() {
  if (!search_) search_.emplace(old_, new_, options_, tuning_.near_lines);
  const Resync found = search_->Find();
  switch (found.kind) {
    case Resync::Kind::kAdded:
      AddLines(found.lines);
      break;
    case Resync::Kind::kDeleted:
      DeleteLines(found.lines);
      break;
    case Resync::Kind::kChanged:
      writer_.WriteChanged();
      AdvanceBoth();
      break;
  }
}

void Difference::AddLines(LineIndex count) {
  for (; count > 0; --count) {
    writer_.WriteAdded();
    new_.AdvanceSide();
  }
}

void Difference::DeleteLines(LineIndex count) {
  for (; count > 0; --count) {
    writer_.WriteDeleted();
    old_.AdvanceSide();
  }
}

}  // namespace ledrix::modComp
