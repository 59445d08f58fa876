#include "text/name_pattern.h"

#include <algorithm>
#include <string>
#include <vector>

#include "text/ascii.h"
#include "text/utf8.h"

namespace ledrix {
namespace {

std::u32string Folded(std::string_view text, LetterCase letter_case) {
  std::u32string characters = Utf8Characters(text);
  if (letter_case == LetterCase::kIgnore) {
    std::transform(characters.begin(), characters.end(), characters.begin(), ToUpper);
  }
  return characters;
}

}  // namespace

PatternList::PatternList(std::string_view patterns, LetterCase letter_case)
    : letter_case_(letter_case) {
  for (const std::string& piece : SplitAt(patterns, ';')) {
    patterns_.push_back(Read(Folded(piece, letter_case)));
  }
}

PatternList PatternList::Single(std::string_view pattern, LetterCase letter_case) {
  PatternList list(letter_case);
  list.patterns_.push_back(Read(Folded(pattern, letter_case)));
  return list;
}

bool PatternList::Matches(std::string_view name) const {
  const std::u32string folded = Folded(name, letter_case_);
  return std::any_of(patterns_.begin(), patterns_.end(),
                     [&folded](const Pattern& pattern) { return Matches(folded, pattern); });
}

// Reads the list that opens at `position`, which is left at its last character.
PatternList::Place PatternList::ReadList(const std::u32string& pattern, size_t& position) {
  const size_t close = pattern.find(U']', position + 1);
  if (close == std::u32string::npos) return {Place::Kind::kOneOf, U"["};
  std::u32string list = pattern.substr(position + 1, close - position - 1);
  position = close;
  if (!list.empty() && list[0] == U'!') return {Place::Kind::kNoneOf, list.substr(1)};
  return {Place::Kind::kOneOf, list};
}

PatternList::Pattern PatternList::Read(const std::u32string& pattern) {
  Pattern places;
  for (size_t i = 0; i < pattern.size(); ++i) {
    switch (pattern[i]) {
      case U'*':
        places.push_back({Place::Kind::kRun, {}});
        break;
      case U'?':
        places.push_back({Place::Kind::kAny, {}});
        break;
      case U'#':
        places.push_back({Place::Kind::kDigit, {}});
        break;
      case U'[':
        places.push_back(ReadList(pattern, i));
        break;
      default:
        places.push_back({Place::Kind::kOneOf, std::u32string(1, pattern[i])});
    }
  }
  return places;
}

bool PatternList::Place::Takes(char32_t c) const {
  const bool listed = characters.find(c) != std::u32string::npos;
  switch (kind) {
    case Kind::kRun:
    case Kind::kAny:
      return true;
    case Kind::kDigit:
      return c >= U'0' && c <= U'9';
    case Kind::kOneOf:
      return listed;
    case Kind::kNoneOf:
      return !listed;
  }
  return false;
}

// Each "*" takes as little as it can and is widened by one when what follows it fails; only the
// last "*" met needs to be widened, so the time is at most name times pattern.
bool PatternList::Matches(const std::u32string& name, const Pattern& places) {
  constexpr size_t kNone = static_cast<size_t>(-1);
  size_t n = 0;
  size_t p = 0;
  size_t run = kNone;  // place of the last "*"
  size_t run_end = 0;  // where in the name it ends for now
  while (n < name.size()) {
    if (p < places.size() && places[p].kind == Place::Kind::kRun) {
      run = p++;
      run_end = n;
    } else if (p < places.size() && places[p].Takes(name[n])) {
      ++n;
      ++p;
    } else if (run != kNone) {
      n = ++run_end;
      p = run + 1;
    } else {
      return false;
    }
  }
  return std::all_of(places.begin() + static_cast<std::ptrdiff_t>(p), places.end(),
                     [](const Place& place) { return place.kind == Place::Kind::kRun; });
}

bool MatchesPattern(std::string_view name, std::string_view pattern, LetterCase letter_case) {
  return PatternList::Single(pattern, letter_case).Matches(name);
}

}  // namespace ledrix
