// The row-and-cell codes behind JIS, EUC-JP and Shift_JIS.
#pragma once

#include <cstdint>

namespace ledrix {

inline constexpr int kRows = 94;
inline constexpr int kCells = 94;

// The Shift_JIS code (lead byte * 256 + trail byte) of a row and a cell, both from 1 to 94, of
// JIS X 0208 with NEC row 13 and the rows of the NEC-selected extension; of several codes for one
// character the one that Windows chooses. 0 where there is no character.
uint16_t SjisOfRowCell(int row, int cell);

// The same for the supplementary set JIS X 0212, of which Shift_JIS holds some characters.
uint16_t SjisOfSupplementaryRowCell(int row, int cell);

}  // namespace ledrix
