// How one input file is read: its charset, where its lines are cut, and what converts them.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "charset/charset_name.h"
#include "charset/line_converter.h"
#include "charset/line_cutter.h"

namespace ledrix {

// The option CharsetCode that has every file judged and converted accordingly.
inline constexpr const char* kFullAuto = "FULLAUTO(遅め)";

struct CharsetChoice {
  std::string charset;  // as messages and the path of the copy show it
  LineCutting cutting = LineCutting::kBytes;

  // Only the exact name means that the file is read as it is; its other names convert.
  bool NeedsNoConversion() const { return charset == "Shift_JIS"; }
  // Returns null when the charset is not available.
  std::unique_ptr<LineConverter> MakeConverter() const;
};

// Chooses for a file that begins with `head`, its first kDecidingBytes or all of it. UTF-16 is cut
// as such, in the byte order of its name or of the mark; a file under any other name is when its
// bytes are judged to be UTF-16.
CharsetChoice ChooseCharset(const std::string& charset_code, std::string_view head);

}  // namespace ledrix
