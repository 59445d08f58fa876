// Bytes in any charset that the C library knows, decoded to Unicode.
#pragma once

#include <cstddef>
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

  // How far one call came: bytes that were decoded, and bytes of an invalid sequence behind them,
  // which is one byte that begins no character or what is left of an unfinished one.
  struct Step {
    size_t decoded;
    size_t invalid;  // 0 at the end of the bytes
  };

  // Goes back to the charset's first state.
  void Begin();
  // Appends the characters of the bytes up to the first invalid sequence. The next call goes on
  // behind that.
  Step Decode(std::string_view bytes, std::u32string& characters);

 private:
  explicit IconvDecoder(void* converter) : converter_(converter) {}
  void* converter_;
};

}  // namespace ledrix
