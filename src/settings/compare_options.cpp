#include "settings/compare_options.h"

#include <algorithm>

namespace ledrix {
namespace {

SpaceRule ToSpaceRule(int stored) {
  if (stored == 0) return SpaceRule::kCompare;
  return stored == 1 ? SpaceRule::kIgnoreTrailing : SpaceRule::kIgnoreAll;
}

}  // namespace

int ClampedOption(std::string_view key, int value) {
  const OptionField& field = *FindOptionField(key);
  return std::clamp<int>(value, field.lowest, field.highest);
}

CompareOptions::CompareOptions(const OptionRecord& record)
    : first_column(ClampedOption("OptSTCol", record.OptSTCol)),
      last_column(std::max(first_column, ClampedOption("OptEDCol", record.OptEDCol))),
      match_lines(ClampedOption("OptMatch", record.OptMatch)),
      window_lines(ClampedOption("OptBuff", record.OptBuff)),
      spaces(ToSpaceRule(record.OptSpData)),
      expand_tabs(record.OptTABtoSPACE == 1),
      tab_width(ClampedOption("OptTABtoKETA", record.OptTABtoKETA)),
      ignore_case(record.OptUpperCase == 0),
      side_width(ClampedOption("PrintCompLen", record.PrintCompLen)),
      context_lines(ClampedOption("OptLstout", record.OptLstout)),
      all_lines(record.OptOutLineCnt == 1),
      line_numbers(record.LineNoAdd == 1),
      vertical(record.OptOutLineVar == 1),
      wrap(record.NTypeNextLine != 0),
      simple(record.OptSimple == 1),
      skip_same_stamp(record.OptNoCngNoOut == 1),
      drop_unchanged_listing(record.NoCompList == 1),
      merge_prefers_old(record.MergeOld == 1) {}

}  // namespace ledrix
