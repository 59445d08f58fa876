// Half-width characters as their full-width forms.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ledrix {

struct FullWidthChar {
  char32_t character;
  size_t
      taken;  // characters that it stands for: 2 for a katakana letter and its sound mark, else 1
};

// The full-width form of the character at a position counted from 0; one that is not half-width
// stays. REQUIRES: position < text.size().
FullWidthChar FullWidthAt(std::u32string_view text, size_t position);

// The whole text so.
std::u32string ToFullWidth(const std::u32string& text);

}  // namespace ledrix
