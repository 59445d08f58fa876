#include "platform/fixed_width.h"

#include <algorithm>
#include <array>

namespace ledrix {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

constexpr std::array<char, 512> MakeSpaces() {
  std::array<char, 512> spaces{};
  for (char& c : spaces) c = ' ';
  return spaces;
}
constexpr std::array<char, 512> kSpaces = MakeSpaces();

}  // namespace

void WriteSpaces(OutputFile& file, size_t count) {
  while (count > 0) {
    const size_t part = std::min(count, kSpaces.size());
    file.Write({kSpaces.data(), part});
    count -= part;
  }
}

void WriteLine(OutputFile& file, SjisView text) {
  file.Write(text.bytes());
  file.Write(kLineEnd);
}

void WriteFixedWidth(OutputFile& file, SjisView text, size_t width) {
  while (text.size() > width) {
    const size_t cut = SplitsDoubleByte(text, width) ? width - 1 : width;
    file.Write(text.First(cut).bytes());
    WriteSpaces(file, width - cut);
    file.Write(kLineEnd);
    text = text.From(cut);
  }
  file.Write(text.bytes());
  WriteSpaces(file, width - text.size());
  file.Write(kLineEnd);
}

SjisText PadOrCut(SjisView text, size_t width) {
  SjisText padded(text.First(width));
  padded.Append(width - padded.size(), ' ');
  return padded;
}

std::string FormatThousands(int64_t number) {
  std::string digits = std::to_string(number);
  const size_t sign = number < 0 ? 1 : 0;
  for (size_t place = digits.size(); place > sign + 3;) {
    place -= 3;
    digits.insert(place, ",");
  }
  return digits;
}

std::string FormatSignedThousands(int64_t number) {
  return (number >= 0 ? "+" : "") + FormatThousands(number);
}

}  // namespace ledrix
