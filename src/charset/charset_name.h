// The names of the character codes that are converted here, and of no other: what they are called
// by other programs and systems, without regard to letter case, "-", "_" and spaces.
#pragma once

#include <string_view>

namespace ledrix {

enum class CharsetFamily {
  kShiftJis,
  kEucJp,
  kIso2022Jp,
  kUtf8,
  kUtf7,
  kUtf16,    // in the byte order of the file's mark, little-endian without one
  kUtf16Le,  // whatever mark there is
  kUtf16Be,
  kAutodetect,  // "_autodetect"
  kForeign,     // any other name
};

CharsetFamily FamilyOf(std::string_view name);

enum class ByteOrder { kLittleEndian, kBigEndian };

}  // namespace ledrix
