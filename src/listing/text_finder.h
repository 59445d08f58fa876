// Finds a text in lines, by characters.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "listing/line_text.h"

namespace ledrix {

struct FindRules {
  bool fold_case = true;   // letters by their lower case
  bool fold_width = true;  // half-width characters as their full-width forms
};

// Columns [begin, end) of a line.
struct FoundText {
  size_t begin = 0;
  size_t end = 0;

  friend bool operator==(const FoundText&, const FoundText&) = default;
};

class TextFinder {
 public:
  // Bytes of `wanted` that are no UTF-8 are found nowhere.
  TextFinder(std::string_view wanted, FindRules rules);

  bool is_empty() const { return wanted_.empty(); }
  // Where the text stands in a line, from left to right; none overlaps another.
  std::vector<FoundText> FindIn(const LineText& line) const;

 private:
  FindRules rules_;
  std::u32string wanted_;  // folded
};

}  // namespace ledrix
