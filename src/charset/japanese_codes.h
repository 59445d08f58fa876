// The row-and-cell codes behind JIS, EUC-JP and Shift_JIS.
#pragma once

#include <cstdint>

namespace ledrix {

inline constexpr int kRows = 94;
inline constexpr int kCells = 94;

// The character of a row and a cell, both from 1 to 94, of JIS X 0208 with NEC row 13 and the rows
// of the NEC-selected extension; 0 where there is none.
char16_t CharacterOfRowCell(int row, int cell);

// The same for the supplementary set JIS X 0212 with the IBM extension and the user-defined
// characters behind it, most of which Shift_JIS lacks.
char16_t CharacterOfSupplementaryRowCell(int row, int cell);

}  // namespace ledrix
