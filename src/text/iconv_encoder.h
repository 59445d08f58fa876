// Unicode in any charset that the C library knows.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace ledrix {

class IconvEncoder {
 public:
  // Returns null when the C library does not know the charset.
  static std::unique_ptr<IconvEncoder> Open(const std::string& charset);

  ~IconvEncoder();
  IconvEncoder(const IconvEncoder&) = delete;
  IconvEncoder& operator=(const IconvEncoder&) = delete;

  // The bytes of a UTF-8 text, in the charset's first state at both ends. What the charset lacks is
  // written as the C library writes it, or as "?".
  std::string Encode(std::string_view utf8);

 private:
  explicit IconvEncoder(void* converter) : converter_(converter) {}
  void* converter_;
};

}  // namespace ledrix
