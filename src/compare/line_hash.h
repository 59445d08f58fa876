// A fast 64-bit hash of a line's key. Equal hashes are always checked against the bytes, so it
// only has to spread well.
#pragma once

#include <cstdint>
#include <cstring>

#include "platform/sjis_text.h"

namespace ledrix::modComp {

inline constexpr uint64_t kHashFactor = 0x9E3779B97F4A7C15;

// The two halves of a 128-bit product, folded.
inline uint64_t MixHash(uint64_t a, uint64_t b) {
  __extension__ using Wide = unsigned __int128;
  const Wide product = static_cast<Wide>(a) * b;
  return static_cast<uint64_t>(product) ^ static_cast<uint64_t>(product >> 64);
}

inline uint64_t HashLine(SjisView key) {
  const char* bytes = key.data();
  size_t left = key.size();
  uint64_t hash = MixHash(left + 1, kHashFactor);
  for (; left >= sizeof(uint64_t); left -= sizeof(uint64_t), bytes += sizeof(uint64_t)) {
    uint64_t word;
    std::memcpy(&word, bytes, sizeof word);
    hash = MixHash(hash ^ word, kHashFactor);
  }
  uint64_t rest = 0;
  if (left > 0) std::memcpy(&rest, bytes, left);
  return MixHash(hash ^ rest, kHashFactor);
}

}  // namespace ledrix::modComp
