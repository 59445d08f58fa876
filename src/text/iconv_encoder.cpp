#include "text/iconv_encoder.h"

#include <iconv.h>

#include <cerrno>

#include "text/utf8.h"

namespace ledrix {

std::unique_ptr<IconvEncoder> IconvEncoder::Open(const std::string& charset) {
  const iconv_t converter = iconv_open((charset + "//TRANSLIT").c_str(), "UTF-8");
  if (converter == reinterpret_cast<iconv_t>(-1)) return nullptr;  // NOLINT
  return std::unique_ptr<IconvEncoder>(new IconvEncoder(converter));
}

IconvEncoder::~IconvEncoder() {
  iconv_close(converter_);
}

std::string IconvEncoder::Encode(std::string_view utf8) {
  std::string encoded;
  char buffer[512];
  const auto convert = [&](char** in, size_t* in_left) {
    char* out = buffer;
    size_t out_left = sizeof buffer;
    const bool failed = iconv(converter_, in, in_left, &out, &out_left) == static_cast<size_t>(-1);
    const int error = errno;
    encoded.append(buffer, sizeof buffer - out_left);
    return failed ? error : 0;
  };
  char* in = const_cast<char*>(utf8.data());
  size_t in_left = utf8.size();
  while (in_left > 0) {
    const int error = convert(&in, &in_left);
    if (error == 0 || error == E2BIG) continue;
    const std::string_view rest(in, in_left);
    const size_t size = DecodeUtf8(rest, 0).size;
    in += size;
    in_left -= size;
    encoded += '?';
  }
  convert(nullptr, nullptr);
  return encoded;
}

}  // namespace ledrix
