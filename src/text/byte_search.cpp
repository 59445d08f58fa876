#include "text/byte_search.h"

#include <algorithm>
#include <cstring>

namespace ledrix {

size_t CommonPrefixSize(std::string_view a, std::string_view b) {
  const size_t most = std::min(a.size(), b.size());
  size_t same = 0;
  // memcmp tells that a piece is equal, not where it differs; a smaller piece finds that.
  for (const size_t piece : {size_t{4096}, size_t{64}}) {
    while (most - same >= piece && std::memcmp(a.data() + same, b.data() + same, piece) == 0) {
      same += piece;
    }
  }
  while (same < most && a[same] == b[same]) ++same;
  return same;
}

size_t FindLastByte(std::string_view bytes, char wanted) {
  if (bytes.empty()) return std::string_view::npos;
  const void* const found = memrchr(bytes.data(), wanted, bytes.size());
  if (found == nullptr) return std::string_view::npos;
  return static_cast<size_t>(static_cast<const char*>(found) - bytes.data());
}

}  // namespace ledrix
