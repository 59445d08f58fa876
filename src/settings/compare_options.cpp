#include "settings/compare_options.h"

#include <algorithm>

namespace ledrix {
namespace {

SpaceRule ToSpaceRule(int choice) {
  if (choice == 0) return SpaceRule::kCompare;
  return choice == 1 ? SpaceRule::kIgnoreTrailing : SpaceRule::kIgnoreAll;
}

}  // namespace

int ClampedOption(OptionKey key, int value) {
  const OptionField& field = FieldOf(key);
  return std::clamp<int>(value, field.lowest, field.highest);
}

CompareOptions::CompareOptions(const OptionRecord& record)
    : first_column(ClampedOption("OptSTCol", record.OptSTCol)),
      last_column(std::max(first_column, ClampedOption("OptEDCol", record.OptEDCol))),
      match_lines(ClampedOption("OptMatch", record.OptMatch)),
      window_lines(ClampedOption("OptBuff", record.OptBuff)),
      spaces(ToSpaceRule(ClampedOption("OptSpData", record.OptSpData))),
      expand_tabs(IsOn(record.OptTABtoSPACE)),
      tab_width(ClampedOption("OptTABtoKETA", record.OptTABtoKETA)),
      ignore_case(!IsOn(record.OptUpperCase)),
      side_width(ClampedOption("PrintCompLen", record.PrintCompLen)),
      context_lines(ClampedOption("OptLstout", record.OptLstout)),
      all_lines(IsOn(record.OptOutLineCnt)),
      line_numbers(IsOn(record.LineNoAdd)),
      vertical(IsOn(record.OptOutLineVar)),
      wrap(IsOn(record.NTypeNextLine)),
      simple(IsOn(record.OptSimple)),
      skip_same_stamp(IsOn(record.OptNoCngNoOut)),
      drop_unchanged_listing(IsOn(record.NoCompList)),
      merge_prefers_old(IsOn(record.MergeOld)) {}

}  // namespace ledrix
