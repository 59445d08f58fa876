// SHA-256 of bytes as they come.
#pragma once

#include <nettle/sha2.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace ledrix {

class Sha256 {
 public:
  Sha256() { Reset(); }

  void Add(std::string_view bytes) {
    sha256_update(&state_, bytes.size(), reinterpret_cast<const uint8_t*>(bytes.data()));
    size_ += bytes.size();
  }
  // Forgets what was added.
  void Reset() {
    sha256_init(&state_);
    size_ = 0;
  }

  // Bytes added so far.
  uint64_t size() const { return size_; }
  // Of the bytes added so far: 64 hexadecimal digits in lower case.
  std::string Digest() const;

 private:
  sha256_ctx state_;
  uint64_t size_ = 0;
};

}  // namespace ledrix
