#include "settings/dir_compare_options.h"

#include <cstdlib>

#include "settings/compare_options.h"

namespace ledrix {

DirCompareOptions::DirCompareOptions(const OptionRecord& record)
    : width(static_cast<size_t>(ClampedOption("PrintDCompLen", record.PrintDCompLen))),
      with_added(IsOn(record.DCompOut[0])),
      with_deleted(IsOn(record.DCompOut[1])),
      with_updated(IsOn(record.DCompOut[2])),
      ignore_case(!IsOn(record.DCompBinary)),
      full_width(!IsOn(record.DCompKana)),
      filter_names(IsOn(record.DCompSelect)),
      ignore_one_second(IsOn(record.DComp1s)),
      ignore_nine_hours(IsOn(record.DComp9h)) {}

bool DirCompareOptions::Tolerates(int64_t seconds_apart) const {
  constexpr int64_t kNineHours = int64_t{9} * 3600;
  const int64_t apart = std::abs(seconds_apart);
  return (ignore_one_second && apart == 1) || (ignore_nine_hours && apart == kNineHours) ||
         (ignore_one_second && ignore_nine_hours && apart == kNineHours + 1);
}

}  // namespace ledrix
