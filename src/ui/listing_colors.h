// The colours in which a listing is shown, and shapes that tell changes apart without them.
#pragma once

#include <QColor>
#include <QPainter>
#include <QPalette>
#include <QRectF>

#include "listing/listing_shape.h"

namespace ledrix {

enum class ColorScheme { kAuto, kLight, kDark, kContrast };  // kAuto: as the desktop's palette

// Of the bar at the edge of a row.
enum class BarShape { kNone, kSolid, kHollow, kStriped };

struct RowColors {
  QColor back;  // invalid: that of the listing
  QColor bar;
  BarShape shape = BarShape::kNone;
};

struct ListingColors {
  QColor back;
  QColor text;
  QColor dim;
  QColor selected_back;
  QColor selected_text;
  QColor found;
  QColor current_found;
  RowColors changed;
  RowColors added;
  RowColors deleted;
  RowColors marker;

  // Of a row; `kind` is that of the first row of its change.
  RowColors Of(RowKind kind) const;
};

ListingColors MakeListingColors(const QPalette& palette, ColorScheme scheme);

// Black on white, nothing tinted: for paper.
ListingColors PaperColors();

void DrawBar(QPainter& painter, const QRectF& place, const RowColors& colors);

}  // namespace ledrix
