#include "compare/difference.h"

namespace ledrix::modComp {

void Difference::CompareStep() {
  if (old_.at_end()) {
    AddLines(1);
  } else if (new_.at_end()) {
    DeleteLines(1);
  } else if (old_.current_line().key == new_.current_line().key) {
    writer_.WriteUnchanged();
    AdvanceBoth();
  } else {
    Resynchronise();
  }
}

void Difference::Resynchronise() {
  if (!search_) search_.emplace(old_, new_, options_);
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
