// Stand-ins for the fonts of Windows.
#pragma once

namespace ledrix {

// Names fonts that show Japanese where the font that a user chose is not installed. The stored name
// stays what it is.
void SubstituteFonts();

}  // namespace ledrix
