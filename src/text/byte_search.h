// Searches in bytes that take many of them at a time.
#pragma once

#include <cstddef>
#include <string_view>

namespace ledrix {

// Number of bytes with which both begin.
size_t CommonPrefixSize(std::string_view a, std::string_view b);

// Position of the last `wanted`, counted from 0; npos when there is none.
size_t FindLastByte(std::string_view bytes, char wanted);

// Lines of which every one ends in CR LF, none in CR or LF alone: their number; npos when it is
// otherwise, or when the last one has no end.
size_t CountCrLfLines(std::string_view bytes);
// How often a byte stands directly before another one.
size_t CountPairs(std::string_view bytes, char first, char second);

// Position, from `from` on, of the first byte that is one of two; npos when there is none.
size_t FindEither(std::string_view bytes, char a, char b, size_t from);

}  // namespace ledrix
