#include "run/listing_format.h"

#include <algorithm>

namespace ledrix {
namespace {

ListingMarks MakeMarks(const ListingStyle& style) {
  SjisText continued = "  --  "_sjis;
  SjisText unchanged = SjisText::Repeat(kMarkWidth, ' ');
  if (!style.simple) {
    return {" 変更 "_sjis, " 追加 "_sjis, " 削除 "_sjis, continued, unchanged};
  }
  if (style.vertical) {
    return {" UPD> "_sjis, " ADD> "_sjis, " DEL< "_sjis, continued, unchanged};
  }
  return {" <--> "_sjis, " ---> "_sjis, " <--- "_sjis, continued, unchanged};
}

SjisText MakeOmissionLine(const ListingStyle& style) {
  const size_t quarter = style.side_width / 4;
  const size_t rest = style.side_width % 4;
  const SjisText fill = SjisText::Repeat(quarter, style.simple ? "=="_sjis : "◇"_sjis);
  SjisText middle = fill + (style.simple ? "======"_sjis : " 中略 "_sjis) + fill;
  if (style.vertical) return middle;
  const SjisText margin = SjisText::Repeat(2 * quarter + rest, ' ');
  return margin + middle + margin;
}

SjisText MakeRuler(const ListingStyle& style) {
  const size_t full = style.side_width * (style.vertical ? 2 : 1);
  const size_t length = full - (style.line_numbers ? kLineNoWidth : 0);
  std::string ruler = style.line_numbers ? "LINE " : "";
  for (size_t i = 1; i <= length / 10; ++i) {
    ruler += "----+----";
    ruler += static_cast<char>('0' + i % 10);
  }
  for (size_t j = 1; j <= length % 10; ++j) ruler += j == 5 ? '+' : '-';
  return SjisText::FromBytes(ruler);
}

// The decimal digits, with zeros in front up to `width`.
std::string ZeroPadded(int64_t number, size_t width) {
  std::string digits = std::to_string(number);
  if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
  return digits;
}

}  // namespace

ListingFormat::ListingFormat(const ListingStyle& style)
    : side_width(style.side_width),
      text_width(side_width - (style.line_numbers ? kLineNoWidth : 0)),
      marks(MakeMarks(style)),
      omission_line(MakeOmissionLine(style)),
      ruler(MakeRuler(style)),
      left_ruler(style.vertical ? SjisText() : ruler),
      ruler_line(left_ruler + SjisText::Repeat(kMarkWidth, ' ') + ruler) {}

ListingFormat::ListingFormat(const CompareOptions& options)
    : ListingFormat(ListingStyle{static_cast<size_t>(options.side_width), options.vertical,
                                 options.simple, options.line_numbers}) {}

WrappedPiece WrapPiece(SjisView text, size_t width, bool wrap) {
  if (!wrap) {
    const SjisView cut = text.First(width);
    return {cut, width - cut.size(), {}};
  }
  if (text.size() <= width) return {text, width - text.size(), {}};
  const size_t cut = SplitsDoubleByte(text, width) ? width - 1 : width;
  return {text.First(cut), width - cut, text.From(cut)};
}

SjisText FormatLineNo(int64_t number) {
  const std::string digits = ZeroPadded(number, 4);
  return SjisText::FromBytes(digits.substr(digits.size() - 4));
}

SjisText BlockMarkerText(char kind, int64_t number) {
  return SjisText::FromBytes("(" + std::string(1, kind) + ZeroPadded(number, 3) + ")");
}

}  // namespace ledrix
