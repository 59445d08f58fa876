// Searches in bytes that take many of them at a time.
#pragma once

#include <cstddef>
#include <string_view>

namespace ledrix {

// Number of bytes with which both begin.
size_t CommonPrefixSize(std::string_view a, std::string_view b);

// Position of the last `wanted`, counted from 0; npos when there is none.
size_t FindLastByte(std::string_view bytes, char wanted);

}  // namespace ledrix
