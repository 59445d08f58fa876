// A fast 64-bit hash of a line's key. Equal hashes are always checked against the bytes, so it
// only has to spread well.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "text/sjis_text.h"

namespace ledrix::modComp {

inline constexpr uint64_t kHashFactor = 0x9E3779B97F4A7C15;

// The two halves of a 128-bit product, folded.
inline uint64_t MixHash(uint64_t a, uint64_t b) {
  __extension__ using Wide = unsigned __int128;
  const Wide product = static_cast<Wide>(a) * b;
  return static_cast<uint64_t>(product) ^ static_cast<uint64_t>(product >> 64);
}

inline uint64_t LoadWord(const char* bytes) {
  uint64_t word;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

// The bytes of a text of less than two words, as two words; every byte enters one of them.
inline uint64_t HashShortLine(const char* bytes, size_t size) {
  constexpr size_t kWord = sizeof(uint64_t);
  uint64_t first = 0;
  uint64_t last = 0;
  if (size >= kWord) {
    first = LoadWord(bytes);
    last = LoadWord(bytes + size - kWord);
  } else {
    for (size_t i = 0; i < size; ++i) first = first << 8 | static_cast<unsigned char>(bytes[i]);
  }
  return MixHash(first ^ kHashFactor, last ^ MixHash(size + 1, kHashFactor));
}

// Two products a step that do not wait for each other. The last words are read again where a step
// took some of their bytes, so that no byte is handled alone.
inline uint64_t HashLine(SjisView key) {
  constexpr uint64_t kSecondFactor = 0xD6E8FEB86659FD93;
  constexpr size_t kHalf = 2 * sizeof(uint64_t);
  const char* bytes = key.data();
  const size_t size = key.size();
  if (size < kHalf) return HashShortLine(bytes, size);
  uint64_t a = size ^ kHashFactor;
  uint64_t b = kSecondFactor;
  const char* const last = bytes + size - kHalf;
  for (; last - bytes > static_cast<std::ptrdiff_t>(kHalf); bytes += 2 * kHalf) {
    a = MixHash(a ^ LoadWord(bytes), LoadWord(bytes + 8) ^ kHashFactor);
    b = MixHash(b ^ LoadWord(bytes + 16), LoadWord(bytes + 24) ^ kSecondFactor);
  }
  if (bytes < last) a = MixHash(a ^ LoadWord(bytes), LoadWord(bytes + 8) ^ kHashFactor);
  b = MixHash(b ^ LoadWord(last), LoadWord(last + 8) ^ kSecondFactor);
  return MixHash(a ^ kSecondFactor, b ^ kHashFactor);
}

}  // namespace ledrix::modComp
