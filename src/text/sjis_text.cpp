#include "text/sjis_text.h"

#include "text/code_page_932.h"

namespace ledrix {

SjisText SjisText::Repeat(size_t count, SjisView piece) {
  SjisText text;
  text.bytes_.reserve(count * piece.size());
  for (size_t i = 0; i < count; ++i) text += piece;
  return text;
}

bool SplitsDoubleByte(SjisView text, size_t count) {
  if (count == 0 || text.size() <= count) return false;
  if (!IsSjisTrail(text.At(count))) return false;
  // A character ends behind every byte that is no lead byte; of the lead bytes behind the last of
  // those, each may be a trail byte too, every second one closes a character.
  size_t leads = 0;
  while (leads < count && IsSjisLead(text.At(count - 1 - leads))) ++leads;
  return leads % 2 == 1;
}

SjisView Trim(SjisView text) {
  size_t start = 0;
  while (start < text.size() && text.At(start) == ' ') ++start;
  return TrimRight(text.From(start));
}

SjisText operator""_sjis(const char* utf8, size_t size) {
  return EncodeSjis(std::string_view(utf8, size));
}

}  // namespace ledrix
