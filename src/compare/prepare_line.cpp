#include "compare/prepare_line.h"

#include <algorithm>
#include <cstring>

namespace ledrix::modComp {
namespace {

constexpr unsigned kFullWidthSpace = 0x8140;

// Calls visit(code, bytes) for each character that has a part inside the compared columns of a
// line, stepping by characters from the line's start. Of a character that a column edge splits
// only the part inside is visited, with the code 0.
template <class Visit>
void VisitKeyCharacters(const CompareOptions& options, SjisView raw, Visit visit) {
  const size_t begin = options.first_column - 1;
  const size_t end = std::min<size_t>(raw.size(), options.last_column);
  for (size_t position = 0; position < end;) {
    const size_t size = SjisCharSize(raw, position);
    const size_t from = std::max(position, begin);
    const size_t to = std::min(position + size, end);
    if (from < to) {
      const bool whole = to - from == size;
      const unsigned code =
          size == 2 ? raw.At(position) * 256u + raw.At(position + 1) : raw.At(position);
      visit(whole ? code : 0u, raw.From(from).First(to - from));
    }
    position += size;
  }
}

bool IsSpace(unsigned code) {
  return code == ' ' || code == kFullWidthSpace;
}

bool HasSpace(const CompareOptions& options, SjisView raw) {
  bool found = false;
  VisitKeyCharacters(options, raw,
                     [&found](unsigned code, SjisView) { found = found || IsSpace(code); });
  return found;
}

// The key in upper case, spaces dropped when the space rule says so.
SjisView UpperCaseKey(const CompareOptions& options, SjisView raw, TextArena& arena) {
  char* const start = arena.Allocate(KeyCut(options, raw).size());
  char* out = start;
  VisitKeyCharacters(options, raw, [&](unsigned code, SjisView bytes) {
    if (options.spaces == SpaceRule::kIgnoreAll && IsSpace(code)) return;
    const unsigned upper = UpperCaseCode(code);
    if (upper == code) {
      std::memcpy(out, bytes.data(), bytes.size());
      out += bytes.size();
    } else {
      if (upper > 0xFF) *out++ = static_cast<char>(upper >> 8);
      *out++ = static_cast<char>(upper & 0xFF);
    }
  });
  const auto key = SjisView::FromBytes({start, static_cast<size_t>(out - start)});
  return options.spaces == SpaceRule::kCompare ? key : TrimRight(key);
}

}  // namespace

SjisView MakeRewrittenKey(const CompareOptions& options, SjisView raw, TextArena& arena) {
  return options.ignore_case ? UpperCaseKey(options, raw, arena)
                             : RemoveAllSpaces(options, raw, arena);
}

SjisView ExpandTabs(SjisView text, int tab_width, TextArena& arena) {
  const std::string_view bytes = text.bytes();
  const auto tabs = static_cast<size_t>(std::count(bytes.begin(), bytes.end(), '\t'));
  if (tabs == 0) return text;
  const auto width = static_cast<size_t>(tab_width);
  char* const start = arena.Allocate(bytes.size() + tabs * width);
  char* out = start;
  for (const char c : bytes) {
    if (c != '\t') {
      *out++ = c;
      continue;
    }
    const size_t spaces = width - static_cast<size_t>(out - start) % width;
    std::memset(out, ' ', spaces);
    out += spaces;
  }
  return SjisView::FromBytes({start, static_cast<size_t>(out - start)});
}

size_t ExpandedSize(SjisView text, int tab_width) {
  const std::string_view bytes = text.bytes();
  const auto width = static_cast<size_t>(tab_width);
  size_t added = 0;
  for (size_t tab = bytes.find('\t'); tab != std::string_view::npos;
       tab = bytes.find('\t', tab + 1)) {
    added += width - 1 - (tab + added) % width;
  }
  return bytes.size() + added;
}

SjisView RemoveAllSpaces(const CompareOptions& options, SjisView raw, TextArena& arena) {
  const SjisView cut = KeyCut(options, raw);
  if (!HasSpace(options, raw)) return cut;
  char* const start = arena.Allocate(cut.size());
  char* out = start;
  VisitKeyCharacters(options, raw, [&out](unsigned code, SjisView bytes) {
    if (IsSpace(code)) return;
    std::memcpy(out, bytes.data(), bytes.size());
    out += bytes.size();
  });
  return SjisView::FromBytes({start, static_cast<size_t>(out - start)});
}

unsigned UpperCaseCode(unsigned code) {
  struct Range {
    unsigned first;
    unsigned last;
    unsigned upper_first;
  };
  if (code <= 0xFF) return code >= 'a' && code <= 'z' ? code - ('a' - 'A') : code;
  static constexpr Range kRanges[] = {
      {0x8281, 0x829A, 0x8260},                            // Latin
      {0x83BF, 0x83D6, 0x839F},                            // Greek
      {0x8470, 0x847E, 0x8440}, {0x8480, 0x8491, 0x844F},  // Cyrillic, around the gap at 7F
      {0xEEEF, 0xEEF8, 0x8754}, {0xFA40, 0xFA49, 0x8754},  // small Roman numerals
      {0xFA4A, 0xFA53, 0x8754},                            // the second large Roman numerals
  };
  const unsigned lead = code >> 8;
  if ((lead < 0x82 || lead > 0x84) && lead != 0xEE && lead != 0xFA) return code;
  for (const Range& range : kRanges) {
    if (code >= range.first && code <= range.last) return code - range.first + range.upper_first;
  }
  return code;
}

}  // namespace ledrix::modComp
