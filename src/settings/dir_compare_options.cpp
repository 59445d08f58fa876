#include "settings/dir_compare_options.h"

#include <cstdlib>

#include "settings/compare_options.h"

namespace ledrix {

DirCompareOptions::DirCompareOptions(const OptionRecord& record)
    : width(static_cast<size_t>(ClampedOption("PrintDCompLen", record.PrintDCompLen))),
      with_added(record.DCompOut[0] == 1),
      with_deleted(record.DCompOut[1] == 1),
      with_updated(record.DCompOut[2] == 1),
      ignore_case(record.DCompBinary == 0),
      full_width(record.DCompKana == 0),
      filter_names(record.DCompSelect == 1),
      ignore_one_second(record.DComp1s == 1),
      ignore_nine_hours(record.DComp9h == 1) {}

bool DirCompareOptions::Tolerates(int64_t seconds_apart) const {
  constexpr int64_t kNineHours = int64_t{9} * 3600;
  const int64_t apart = std::abs(seconds_apart);
  return (ignore_one_second && apart == 1) || (ignore_nine_hours && apart == kNineHours) ||
         (ignore_one_second && ignore_nine_hours && apart == kNineHours + 1);
}

}  // namespace ledrix
