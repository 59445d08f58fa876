// Looking at single bytes of a text as numbers from 0 to 255.
#pragma once

#include <cstddef>
#include <string_view>

namespace ledrix {

// REQUIRES: position < bytes.size().
constexpr unsigned ByteAt(std::string_view bytes, size_t position) {
  return static_cast<unsigned char>(bytes[position]);
}

constexpr bool IsIn(unsigned b, unsigned lowest, unsigned highest) {
  return b >= lowest && b <= highest;
}

}  // namespace ledrix
