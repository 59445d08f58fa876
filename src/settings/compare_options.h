// The options of the text compare as its engine may use them: every number clamped to its valid
// range, whatever the record holds. Taken once at the start of every pair.
#pragma once

#include "settings/option_record.h"

namespace ledrix {

// A stored number clamped to the valid range of its option.
int ClampedOption(OptionKey key, int value);

enum class SpaceRule { kCompare, kIgnoreTrailing, kIgnoreAll };

struct CompareOptions {
  explicit CompareOptions(const OptionRecord& record);

  // Columns are bytes of a line, counted from 1; 1 <= first_column <= last_column <= 9999.
  int first_column;
  int last_column;
  int match_lines;   // 1-99
  int window_lines;  // 1-4000, the current line included
  SpaceRule spaces;
  bool expand_tabs;
  int tab_width;  // 1-16 columns
  bool ignore_case;

  int side_width;     // 70-300 columns
  int context_lines;  // 1-99
  bool all_lines;
  bool line_numbers;
  bool vertical;
  bool wrap;
  bool simple;

  bool skip_same_stamp;
  bool drop_unchanged_listing;
  bool merge_prefers_old;

  // Bytes of the compared part of a line, 1-9999.
  int compare_length() const { return last_column - first_column + 1; }
};

}  // namespace ledrix
