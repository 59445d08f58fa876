// How a compare goes about its work. No value changes what is decided or written.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/line_reader.h"

namespace ledrix::modComp {

struct CompareTuning {
  // Bytes read of a file at a time; a line may be longer. At least 1.
  size_t block_bytes = LineReader::kBlockBytes;
  // Lines that a search looks ahead before it builds its index; 0: it always asks the index.
  int64_t near_lines = 64;
  // Unchanged pairs before the bytes behind them are compared as a whole, and before that is tried
  // again after it was in vain. At least 1.
  int64_t pairs_before_skip = 16;
};

}  // namespace ledrix::modComp
