// The options of the directory compare as its engine may use them, clamped to their valid ranges.
#pragma once

#include <cstddef>
#include <cstdint>

#include "settings/option_record.h"

namespace ledrix {

struct DirCompareOptions {
  explicit DirCompareOptions(const OptionRecord& record);

  size_t width;  // columns of the listing, 70-300
  // Which details the listing has.
  bool with_added;
  bool with_deleted;
  bool with_updated;
  // How entries pair.
  bool ignore_case;
  bool full_width;  // half-width forms count as full-width ones
  bool filter_names;
  // Differences in time that count as none, alone and together.
  bool ignore_one_second;
  bool ignore_nine_hours;

  // True when two times this many seconds apart count as the same although they differ.
  bool Tolerates(int64_t seconds_apart) const;
};

}  // namespace ledrix
