#include "charset/utf7_run.h"

namespace ledrix {
namespace {

// The value of a byte of the alphabet, or -1.
int Value(char c) {
  static constexpr std::string_view kAlphabet =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  const size_t place = kAlphabet.find(c);
  return place == std::string_view::npos ? -1 : static_cast<int>(place);
}

}  // namespace

Utf7Run ReadUtf7Run(std::string_view bytes, size_t start, std::u16string& units) {
  units.clear();
  unsigned bits = 0;
  int bit_count = 0;
  size_t i = start;
  for (int value = 0; i < bytes.size() && (value = Value(bytes[i])) >= 0; ++i) {
    bits = (bits << 6 | static_cast<unsigned>(value)) & 0x3FFFFF;
    bit_count += 6;
    if (bit_count >= 16) {
      bit_count -= 16;
      units.push_back(static_cast<char16_t>(bits >> bit_count & 0xFFFF));
    }
  }
  const bool bits_left = bit_count >= 6 || (bits & ((1u << bit_count) - 1)) != 0;
  return {i - start, i < bytes.size() && bytes[i] == '-', bits_left};
}

}  // namespace ledrix
