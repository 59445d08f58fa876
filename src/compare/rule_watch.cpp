#include "compare/rule_watch.h"

#include <algorithm>
#include <limits>

namespace ledrix::modComp {

RuleWatch::RuleWatch(DecisionWriter& writer, const LineRing& old_ring, const LineRing& new_ring,
                     const CompareOptions& options, const FoldedLines& old_folded,
                     const FoldedLines& new_folded, EqualByRule& found)
    : writer_(writer),
      old_(old_ring),
      new_(new_ring),
      old_walk_{old_folded},
      new_walk_{new_folded},
      found_(found) {
  const auto without = [&](EqualityRule rule, const auto& switch_off) {
    rules_.push_back({rule, options});
    switch_off(rules_.back().options);
  };
  without(EqualityRule::kColumns, [](CompareOptions& all) {
    all.first_column = 1;
    all.last_column = std::numeric_limits<int>::max();
  });
  without(EqualityRule::kSpaces, [](CompareOptions& all) { all.spaces = SpaceRule::kCompare; });
  without(EqualityRule::kTabs, [](CompareOptions& all) { all.expand_tabs = false; });
  without(EqualityRule::kCase, [](CompareOptions& all) { all.ignore_case = false; });
}

uint64_t RuleWatch::Walk::DigestAt(LineIndex line) {
  return NextFrom(line) == line ? lines[next].digest : 0;
}

LineIndex RuleWatch::Walk::NextFrom(LineIndex line) {
  while (next < lines.size() && lines[next].line < line) ++next;
  return next < lines.size() ? lines[next].line : std::numeric_limits<LineIndex>::max();
}

void RuleWatch::WriteUnchanged() {
  const LineIndex old_line = old_.current();
  const LineIndex new_line = new_.current();
  const bool folded_apart = old_walk_.DigestAt(old_line) != new_walk_.DigestAt(new_line);
  const SjisView old_text = old_.TextAt(old_line);
  const SjisView new_text = new_.TextAt(new_line);
  if (folded_apart) ++found_.without[static_cast<size_t>(EqualityRule::kCharacters)];
  if (folded_apart || old_text != new_text) Count(old_line, new_line);
  if (old_text != new_text) {
    for (const WithoutRule& without : rules_) {
      if (KeyUnder(without.options, old_text) == KeyUnder(without.options, new_text)) continue;
      ++found_.without[static_cast<size_t>(without.rule)];
    }
    arena_.Reset();
  }
  writer_.WriteUnchanged();
}

// These are equal byte for byte, as Shift_JIS.
void RuleWatch::WriteUnchangedRun(LineIndex lines) {
  const LineIndex old_first = old_.current() + 1;
  const LineIndex new_first = new_.current() + 1;
  for (LineIndex i = 0;; ++i) {
    i = std::min(old_walk_.NextFrom(old_first + i) - old_first,
                 new_walk_.NextFrom(new_first + i) - new_first);
    if (i >= lines) break;
    if (old_walk_.DigestAt(old_first + i) == new_walk_.DigestAt(new_first + i)) continue;
    ++found_.without[static_cast<size_t>(EqualityRule::kCharacters)];
    Count(old_first + i, new_first + i);
  }
  writer_.WriteUnchangedRun(lines);
}

void RuleWatch::Count(LineIndex old_line, LineIndex new_line) {
  if (found_.lines++ >= static_cast<int64_t>(EqualByRule::kMostLines)) return;
  found_.first_lines[Side::kOld].push_back(old_line + 1);
  found_.first_lines[Side::kNew].push_back(new_line + 1);
}

SjisView RuleWatch::KeyUnder(const CompareOptions& options, SjisView line) {
  if (options.expand_tabs) line = ExpandTabs(line, options.tab_width, arena_);
  return PrepareLine(options, line, arena_).key;
}

}  // namespace ledrix::modComp
