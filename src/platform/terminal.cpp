#include "platform/terminal.h"

#include <unistd.h>

#include "text/utf8.h"

namespace ledrix {

std::string WithoutControls(std::string_view text) {
  std::string shown;
  for (size_t at = 0; at < text.size();) {
    const Utf8Char next = DecodeUtf8(text, at);
    const bool is_control =
        next.character < 0x20 || (next.character >= 0x7F && next.character <= 0x9F);
    shown += is_control ? "?" : text.substr(at, next.size);
    at += next.size;
  }
  return shown;
}

std::string ShownOn(int descriptor, const std::string& text) {
  return isatty(descriptor) == 1 ? WithoutControls(text) : text;
}

}  // namespace ledrix
