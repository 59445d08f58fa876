#include "ui/listing_colors.h"

namespace ledrix {
namespace {

// What a scheme tints rows with, on its usual background.
struct Tints {
  const char* changed_back;
  const char* changed;
  const char* added_back;
  const char* added;
  const char* deleted_back;
  const char* deleted;
  const char* marker_back;
  const char* marker;
  const char* found;
  const char* current_found;
};
constexpr Tints kLightTints = {"#fff3c4", "#b07a00", "#d9f2dc", "#1f7a3d", "#fbdcdc",
                               "#b3261e", "#e3ebf7", "#3b5b8c", "#ffe14d", "#ff9f40"};
constexpr Tints kDarkTints = {"#40360f", "#f0c040", "#15381f", "#5fd08a", "#4a1f1d",
                              "#ff8a80", "#22304a", "#8fb4ee", "#6b5900", "#a05a00"};

QColor Between(const QColor& text, const QColor& back) {
  const auto mix = [](int a, int b) { return (6 * a + 4 * b) / 10; };
  return {mix(text.red(), back.red()), mix(text.green(), back.green()),
          mix(text.blue(), back.blue())};
}

ListingColors Tinted(const QPalette& palette, const Tints& tints) {
  ListingColors colors;
  colors.back = palette.color(QPalette::Base);
  colors.text = palette.color(QPalette::Text);
  colors.dim = Between(colors.text, colors.back);
  colors.selected_back = palette.color(QPalette::Highlight);
  colors.selected_text = palette.color(QPalette::HighlightedText);
  colors.found = tints.found;
  colors.current_found = tints.current_found;
  colors.changed = {tints.changed_back, tints.changed, BarShape::kSolid};
  colors.added = {tints.added_back, tints.added, BarShape::kHollow};
  colors.deleted = {tints.deleted_back, tints.deleted, BarShape::kStriped};
  colors.marker = {tints.marker_back, tints.marker, BarShape::kNone};
  return colors;
}

// Nothing is tinted, what differs is told by the bars and by lines.
ListingColors Plain(const QColor& back, const QColor& text) {
  ListingColors colors;
  colors.back = back;
  colors.text = colors.dim = text;
  colors.selected_back = text;
  colors.selected_text = back;
  const bool is_dark = back.lightness() < 128;
  colors.found = is_dark ? "#5c5c00" : "#ffff00";
  colors.current_found = is_dark ? "#a000a0" : "#ff80ff";
  colors.changed = {QColor(), text, BarShape::kSolid};
  colors.added = {QColor(), text, BarShape::kHollow};
  colors.deleted = {QColor(), text, BarShape::kStriped};
  colors.marker = {QColor(), text, BarShape::kNone};
  return colors;
}

bool IsDark(const QPalette& palette) {
  return palette.color(QPalette::Base).lightness() < 128;
}

// Palettes of high contrast have windows of the very colour of their lists.
bool IsHighContrast(const QPalette& palette) {
  const QColor base = palette.color(QPalette::Base);
  const int contrast = std::abs(base.lightness() - palette.color(QPalette::Text).lightness());
  return contrast == 255 && palette.color(QPalette::Window) == base;
}

QPalette WithBase(QPalette palette, const char* base, const char* text) {
  palette.setColor(QPalette::Base, base);
  palette.setColor(QPalette::Text, text);
  return palette;
}

}  // namespace

RowColors ListingColors::Of(RowKind kind) const {
  switch (kind) {
    case RowKind::kChanged:
      return changed;
    case RowKind::kAdded:
      return added;
    case RowKind::kDeleted:
      return deleted;
    case RowKind::kBlockStart:
    case RowKind::kBlockEnd:
      return marker;
    default:
      return {};
  }
}

ListingColors MakeListingColors(const QPalette& palette, ColorScheme scheme) {
  switch (scheme) {
    case ColorScheme::kLight:
      return Tinted(WithBase(palette, "#ffffff", "#000000"), kLightTints);
    case ColorScheme::kDark:
      return Tinted(WithBase(palette, "#1b1b1b", "#e8e8e8"), kDarkTints);
    case ColorScheme::kContrast:
      return Plain(Qt::black, Qt::white);
    case ColorScheme::kAuto:
      break;
  }
  if (IsHighContrast(palette))
    return Plain(palette.color(QPalette::Base), palette.color(QPalette::Text));
  return Tinted(palette, IsDark(palette) ? kDarkTints : kLightTints);
}

ListingColors PaperColors() {
  return Plain(Qt::white, Qt::black);
}

void DrawBar(QPainter& painter, const QRectF& place, const RowColors& colors) {
  switch (colors.shape) {
    case BarShape::kNone:
      break;
    case BarShape::kSolid:
      painter.fillRect(place, colors.bar);
      break;
    case BarShape::kHollow: {
      const qreal line = place.width() / 4;
      painter.fillRect(QRectF(place.left(), place.top(), line, place.height()), colors.bar);
      painter.fillRect(QRectF(place.right() - line, place.top(), line, place.height()), colors.bar);
      break;
    }
    case BarShape::kStriped:
      for (int stripe = 0; stripe < 3; ++stripe) {
        const qreal top = place.top() + place.height() * (2 * stripe + 0.5) / 6;
        painter.fillRect(QRectF(place.left(), top, place.width(), place.height() / 6), colors.bar);
      }
      break;
  }
}

}  // namespace ledrix
