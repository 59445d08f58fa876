#include "platform/sha256.h"

#include <array>

namespace ledrix {

std::string Sha256::Digest() const {
  sha256_ctx state = state_;
  std::array<uint8_t, SHA256_DIGEST_SIZE> digest{};
  sha256_digest(&state, digest.size(), digest.data());
  constexpr const char* kDigits = "0123456789abcdef";
  std::string text;
  for (const uint8_t byte : digest) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return text;
}

}  // namespace ledrix
