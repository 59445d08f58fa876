#include "platform/iconv_decoder.h"

#include <iconv.h>

#include <cerrno>

#include "platform/utf8.h"

namespace ledrix {
namespace {

// What iconv_open returns when it fails.
const iconv_t kNoConverter = reinterpret_cast<iconv_t>(-1);  // NOLINT(performance-no-int-to-ptr)

}  // namespace

std::unique_ptr<IconvDecoder> IconvDecoder::Open(const std::string& charset) {
  if (charset.empty() || charset.find('/') != std::string::npos) return nullptr;
  const iconv_t converter = iconv_open("UTF-32LE", charset.c_str());
  if (converter == kNoConverter) return nullptr;
  return std::unique_ptr<IconvDecoder>(new IconvDecoder(converter));
}

IconvDecoder::~IconvDecoder() {
  iconv_close(converter_);
}

void IconvDecoder::Decode(std::string_view bytes, std::u32string& characters) {
  iconv(converter_, nullptr, nullptr, nullptr, nullptr);
  char* in = const_cast<char*>(bytes.data());
  size_t in_left = bytes.size();
  while (in_left > 0) {
    char32_t buffer[256];
    char* out = reinterpret_cast<char*>(buffer);
    size_t out_left = sizeof buffer;
    const bool failed =
        iconv(converter_, &in, &in_left, &out, &out_left) == static_cast<size_t>(-1);
    const int error = errno;
    characters.append(buffer, (sizeof buffer - out_left) / sizeof(char32_t));
    if (!failed || error == E2BIG) continue;
    characters += kReplacementCharacter;
    if (error == EINVAL) return;  // the bytes end inside a character
    ++in;
    --in_left;
  }
}

}  // namespace ledrix
