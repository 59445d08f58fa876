// Conversion to Shift_JIS of runs of characters that it has: no character of a run is lost, and
// what ends one (a character that Shift_JIS lacks, an invalid sequence, the end of the bytes within
// a character, a byte-order mark) is left to the converters.
#pragma once

#include <cstddef>
#include <string_view>

#include "charset/charset_name.h"

namespace ledrix {

// Bytes read and bytes written.
struct KnownRun {
  size_t read;
  size_t written;
};

using KnownRunConverter = KnownRun (*)(std::string_view bytes, char* out);

// Beyond the size of the bytes to be converted, so that whole words can be stored.
inline constexpr size_t kKnownRunSlack = 16;

// Each converts from the first byte on. REQUIRES: `out` has room for bytes.size() + kKnownRunSlack.
KnownRun ConvertKnownUtf8(std::string_view bytes, char* out);
KnownRun ConvertKnownEuc(std::string_view bytes, char* out);  // without the supplementary set
KnownRun ConvertKnownUtf16Le(std::string_view bytes, char* out);
KnownRun ConvertKnownUtf16Be(std::string_view bytes, char* out);

}  // namespace ledrix
