#include "charset/japanese_codes.h"

#include <iterator>

#include "text/code_page_932.h"

namespace ledrix {
namespace {

constexpr int kTableRows = 84;

constexpr char16_t kSupplementarySet[] = {
#include "charset/jis_x_0212_table.inc"
};
static_assert(std::size(kSupplementarySet) == size_t{kTableRows} * kCells);

// By arithmetic: two rows share a lead byte, and the lead bytes leave out the half-width katakana.
int CodeByArithmetic(int row, int cell) {
  const int lead = (row - 1) / 2 + (row <= 62 ? 0x81 : 0xC1);
  const int upper_half = cell + (cell <= 63 ? 0x3F : 0x40);  // 7F is no trail byte
  const int trail = row % 2 == 1 ? upper_half : cell + 0x9E;
  return lead * 256 + trail;
}

}  // namespace

char16_t CharacterOfRowCell(int row, int cell) {
  return CodePage932::Get().Decode(static_cast<uint16_t>(CodeByArithmetic(row, cell)));
}

char16_t CharacterOfSupplementaryRowCell(int row, int cell) {
  const int place = (row - 1) * kCells + (cell - 1);
  // The second half of the user-defined characters, from U+E3AC on.
  if (row > kTableRows) return static_cast<char16_t>(0xE3AC + place - kTableRows * kCells);
  return kSupplementarySet[place];
}

}  // namespace ledrix
