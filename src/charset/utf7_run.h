// The runs of UTF-7: UTF-16 units in six bits a byte, between a "+" and the next byte that is none
// of the alphabet's.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ledrix {

struct Utf7Run {
  size_t size;     // bytes behind the "+" that belong to the alphabet
  bool closed;     // a "-" follows, which belongs to the run
  bool bits_left;  // more than the filling of the last byte is left over
};

// Reads the run behind a "+", from a position counted from 0 on, and puts its units in `units`.
// REQUIRES: start <= bytes.size().
Utf7Run ReadUtf7Run(std::string_view bytes, size_t start, std::u16string& units);

}  // namespace ledrix
