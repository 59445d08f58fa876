// From the bytes of a line to what is shown of it and what is compared of it.
#pragma once

#include "settings/compare_options.h"
#include "text/sjis_text.h"
#include "text/text_arena.h"

namespace ledrix::modComp {

// One line of a file. Both texts are views of memory that its reader keeps.
struct Line {
  SjisView raw;  // what the listing and the side outputs show
  SjisView key;  // what decides whether two lines are equal, byte for byte
};

// The compared columns of a line as its bytes stand.
inline SjisView KeyCut(const CompareOptions& options, SjisView raw) {
  return raw.From(options.first_column - 1).First(options.compare_length());
}

// True when a key can hold other bytes than its line, and is worth making only where it is needed.
inline bool RewritesKeys(const CompareOptions& options) {
  return options.ignore_case || options.spaces == SpaceRule::kIgnoreAll;
}

// The key under the case rule, or without any space.
SjisView MakeRewrittenKey(const CompareOptions& options, SjisView raw, TextArena& arena);

// What is shown of a line.
inline SjisView RawText(const CompareOptions& options, SjisView text) {
  return options.spaces == SpaceRule::kCompare ? text : TrimRight(text);
}

// What is compared of it: nothing but the raw text decides that, so equal raw texts have equal
// keys.
inline SjisView MakeKey(const CompareOptions& options, SjisView raw, TextArena& arena) {
  if (RewritesKeys(options)) return MakeRewrittenKey(options, raw, arena);
  const SjisView key = KeyCut(options, raw);
  // A key that ends with its line ends without spaces as that does.
  const bool is_cut = raw.size() > static_cast<size_t>(options.last_column);
  return is_cut && options.spaces != SpaceRule::kCompare ? TrimRight(key) : key;
}

// Applies the space rule, the column range and the case rule to a line whose tabs are expanded
// already when they are to be. What cannot be a view of `text` goes into the arena. A cut that
// splits a double-byte character leaves half of it in the key.
inline Line PrepareLine(const CompareOptions& options, SjisView text, TextArena& arena) {
  const SjisView raw = RawText(options, text);
  return {raw, MakeKey(options, raw, arena)};
}

// The text with every tab replaced by spaces up to the next stop; the stops stand every
// `tab_width` bytes. Returns the text itself when it holds no tab.
SjisView ExpandTabs(SjisView text, int tab_width, TextArena& arena);
// Bytes of that text.
size_t ExpandedSize(SjisView text, int tab_width);

// The compared columns of a line without any half-width or full-width space. Returns a view of the
// line when they hold none.
SjisView RemoveAllSpaces(const CompareOptions& options, SjisView raw, TextArena& arena);

// The upper-case form of a character's Shift_JIS code (lead byte * 256 + trail byte, or one byte):
// ASCII, full-width Latin, Greek, Cyrillic and small Roman numerals. Any other code is returned as
// it is. The second code that exists for each large Roman numeral becomes the first.
unsigned UpperCaseCode(unsigned code);

}  // namespace ledrix::modComp
