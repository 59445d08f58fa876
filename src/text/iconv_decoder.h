// Bytes in any charset that the C library knows, decoded to Unicode.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace ledrix {

class IconvDecoder {
 public:
  // Returns null when the C library does not know the charset. A name without a letter or a digit,
  // and one that holds more than letters, digits, spaces and - _ . : + ( ), is not known.
  static std::unique_ptr<IconvDecoder> Open(const std::string& charset);

  ~IconvDecoder();
  IconvDecoder(const IconvDecoder&) = delete;
  IconvDecoder& operator=(const IconvDecoder&) = delete;

  // Appends the characters of the bytes, beginning in the charset's first state. Each byte that
  // begins no character, and what is left of an unfinished one, becomes U+FFFD.
  void Decode(std::string_view bytes, std::u32string& characters);

 private:
  explicit IconvDecoder(void* converter) : converter_(converter) {}
  void* converter_;
};

}  // namespace ledrix
