#include "charset/japanese_codes.h"

#include <array>
#include <memory>
#include <string>

#include "text/code_page_932.h"
#include "text/iconv_decoder.h"

namespace ledrix {
namespace {

using RowCellTable = std::array<uint16_t, static_cast<size_t>(kRows) * kCells>;

size_t Place(int row, int cell) {
  return size_t{kCells} * static_cast<size_t>(row - 1) + static_cast<size_t>(cell - 1);
}

// By arithmetic: two rows share a lead byte, and the lead bytes leave out the half-width katakana.
int CodeByArithmetic(int row, int cell) {
  const int lead = (row - 1) / 2 + (row <= 62 ? 0x81 : 0xC1);
  const int upper_half = cell + (cell <= 63 ? 0x3F : 0x40);  // 7F is no trail byte
  const int trail = row % 2 == 1 ? upper_half : cell + 0x9E;
  return lead * 256 + trail;
}

template <class CodeOf>
std::unique_ptr<const RowCellTable> MakeTable(CodeOf code_of) {
  auto table = std::make_unique<RowCellTable>();
  for (int row = 1; row <= kRows; ++row) {
    for (int cell = 1; cell <= kCells; ++cell) (*table)[Place(row, cell)] = code_of(row, cell);
  }
  return table;
}

uint16_t MainCode(int row, int cell) {
  const CodePage932& code_page = CodePage932::Get();
  return code_page.Encode(code_page.Decode(static_cast<uint16_t>(CodeByArithmetic(row, cell))));
}

uint16_t SupplementaryCode(int row, int cell) {
  static const std::unique_ptr<IconvDecoder> kDecoder = IconvDecoder::Open("EUC-JP-MS");
  if (kDecoder == nullptr) return 0;
  const char bytes[] = {'\x8F', static_cast<char>(row + 0xA0), static_cast<char>(cell + 0xA0)};
  std::u32string characters;
  kDecoder->Decode({bytes, sizeof bytes}, characters);
  return characters.size() == 1 ? CodePage932::Get().Encode(characters[0]) : uint16_t{0};
}

}  // namespace

uint16_t SjisOfRowCell(int row, int cell) {
  static const std::unique_ptr<const RowCellTable> kTable = MakeTable(MainCode);
  return (*kTable)[Place(row, cell)];
}

uint16_t SjisOfSupplementaryRowCell(int row, int cell) {
  static const std::unique_ptr<const RowCellTable> kTable = MakeTable(SupplementaryCode);
  return (*kTable)[Place(row, cell)];
}

}  // namespace ledrix
