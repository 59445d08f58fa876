#include "text/iconv_decoder.h"

#include <iconv.h>

#include <algorithm>
#include <cerrno>

#include "text/ascii.h"

namespace ledrix {
namespace {

// What iconv_open returns when it fails.
const iconv_t kNoConverter = reinterpret_cast<iconv_t>(-1);  // NOLINT(performance-no-int-to-ptr)

// The C library passes over characters that no name has, and takes what is left, even nothing,
// for a name.
bool IsName(const std::string& charset) {
  const auto is_letter = [](char c) { return IsAsciiLetter(c) || IsAsciiDigit(c); };
  const auto may_stand = [is_letter](char c) {
    return is_letter(c) || std::string_view(" -_.:+()").find(c) != std::string_view::npos;
  };
  return std::any_of(charset.begin(), charset.end(), is_letter) &&
         std::all_of(charset.begin(), charset.end(), may_stand);
}

}  // namespace

std::unique_ptr<IconvDecoder> IconvDecoder::Open(const std::string& charset) {
  if (!IsName(charset)) return nullptr;
  const iconv_t converter = iconv_open("UTF-32LE", charset.c_str());
  if (converter == kNoConverter) return nullptr;
  return std::unique_ptr<IconvDecoder>(new IconvDecoder(converter));
}

IconvDecoder::~IconvDecoder() {
  iconv_close(converter_);
}

void IconvDecoder::Begin() {
  iconv(converter_, nullptr, nullptr, nullptr, nullptr);
}

IconvDecoder::Step IconvDecoder::Decode(std::string_view bytes, std::u32string& characters) {
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
    // Some converters step over what they refuse, also at the end of the bytes.
    const size_t refused = std::max<size_t>(in_left, 1);
    return {bytes.size() - refused, error == EINVAL ? refused : 1};
  }
  return {bytes.size(), 0};
}

}  // namespace ledrix
