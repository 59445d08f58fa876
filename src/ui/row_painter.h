// Draws text in columns: every character exactly as wide as its columns, whatever the font.
#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPointF>
#include <unordered_map>

#include "listing/line_text.h"

namespace ledrix {

// A Japanese font whose full-width characters are two columns wide: the first that is installed,
// else the desktop's own fixed one. Kerning is off.
QFont ColumnFont();

class RowPainter {
 public:
  // `font` has its size; `column` is the width of one column, `row` the height of a row, in the
  // units of `device`.
  RowPainter(const QFont& font, qreal column, qreal row, const QPaintDevice* device);

  qreal column() const { return column_; }
  qreal row() const { return row_; }
  const QFont& font() const { return font_; }

  // Draws the characters that begin in columns [first, end) with the painter's pen. `origin` is
  // where column 0 of the row has its upper left corner. REQUIRES: the painter has the font.
  void Draw(QPainter& painter, QPointF origin, const LineText& text, size_t first,
            size_t end) const;
  // A line below columns [first, end).
  void Underline(QPainter& painter, QPointF origin, size_t first, size_t end,
                 const QColor& color) const;

 private:
  // True when the font's own character is as wide as its columns, so that text can be drawn whole.
  bool IsExact(const TextChar& c) const;
  void DrawAlone(QPainter& painter, QPointF place, const TextChar& c) const;

  QFont font_;
  QFontMetricsF metrics_;
  qreal column_;
  qreal row_;
  qreal baseline_;  // from the upper edge of a row
  mutable std::unordered_map<char32_t, bool> exact_;
};

}  // namespace ledrix
