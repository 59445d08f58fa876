#include "platform/sjis_text.h"

#include "platform/code_page_932.h"

namespace ledrix {

SjisText SjisText::Repeat(size_t count, SjisView piece) {
  SjisText text;
  text.bytes_.reserve(count * piece.size());
  for (size_t i = 0; i < count; ++i) text += piece;
  return text;
}

bool SplitsDoubleByte(SjisView text, size_t count) {
  if (count == 0 || text.size() <= count) return false;
  // Only a lead byte before the cut can be split, which spares the walk for most cuts.
  if (!IsSjisLead(text.At(count - 1)) || !IsSjisTrail(text.At(count))) return false;
  size_t position = 0;
  while (position < count) position += SjisCharSize(text, position);
  return position > count;
}

SjisView TrimRight(SjisView text) {
  size_t size = text.size();
  while (size > 0 && text.At(size - 1) == ' ') --size;
  return text.First(size);
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
