// The converters of Shift_JIS, EUC-JP and ISO-2022-JP. What stands for no character is an invalid
// sequence.
#pragma once

#include <string_view>

#include "charset/line_converter.h"

namespace ledrix {

// Turns each of several codes for one character into the one that Windows chooses.
class SjisConverter : public LineConverter {
 public:
  void ConvertLine(std::string_view bytes, SjisWriter& writer) override;
};

class EucConverter : public LineConverter {
 public:
  EucConverter() : LineConverter(ConvertKnownEuc, "\n") {}
  void ConvertLine(std::string_view bytes, SjisWriter& writer) override;
};

// Half-width katakana of 8-bit JIS stand for themselves; controls and spaces do in any set.
class JisConverter : public LineConverter {
 public:
  void ConvertLine(std::string_view bytes, SjisWriter& writer) override;

  // True when an escape sequence of the code stands anywhere in the bytes.
  static bool HoldsDesignation(std::string_view bytes);
};

}  // namespace ledrix
