#include "ui/row_painter.h"

#include <QFontDatabase>
#include <QStringList>
#include <algorithm>
#include <cmath>

namespace ledrix {
namespace {

QString ToQString(char32_t character) {
  return QString::fromUcs4(&character, 1);
}

// The letter that stands for a control character's symbol where no font has one.
char32_t LetterOf(char32_t symbol) {
  return symbol == 0x2421 ? U'?' : symbol - 0x2400 + U'@';
}

constexpr char32_t kTabSymbol = 0x2409;

bool IsControlSymbol(char32_t character) {
  return character >= 0x2400 && character <= 0x2421;
}

}  // namespace

QFont ColumnFont() {
  const QStringList installed = QFontDatabase::families();
  QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  for (const char* const name :
       {"IPAGothic", "TakaoGothic", "Noto Sans Mono CJK JP", "VL Gothic"}) {
    if (!installed.contains(name)) continue;
    font = QFont(name);
    break;
  }
  font.setKerning(false);
  return font;
}

RowPainter::RowPainter(const QFont& font, qreal column, qreal row, const QPaintDevice* device)
    : font_(font), metrics_(font, device), column_(column), row_(row) {
  baseline_ = (row - metrics_.height()) / 2 + metrics_.ascent();
}

bool RowPainter::IsExact(const TextChar& c) const {
  const auto [found, is_new] = exact_.try_emplace(c.character, false);
  if (is_new) {
    const qreal advance = metrics_.horizontalAdvance(ToQString(c.character));
    found->second = std::abs(advance - column_ * c.columns) < column_ / 1000 &&
                    metrics_.inFontUcs4(c.character);
  }
  return found->second;
}

void RowPainter::Draw(QPainter& painter, QPointF origin, const LineText& text, size_t first,
                      size_t end) const {
  QString run;
  size_t run_begin = 0;
  size_t at = 0;
  const auto place = [&](size_t begin) {
    return QPointF(origin.x() + column_ * static_cast<qreal>(begin), origin.y() + baseline_);
  };
  const auto flush = [&] {
    if (!run.isEmpty()) painter.drawText(place(run_begin), run);
    run.clear();
  };
  for (const TextChar& character : text) {
    if (at >= end) break;
    const TextChar c = {VisibleForm(character.character), character.columns};
    const size_t begin = at;
    at += c.columns;
    if (begin < first) continue;
    if (c.character == U' ' && run.isEmpty()) continue;
    if (IsExact(c)) {
      if (run.isEmpty()) run_begin = begin;
      run += ToQString(c.character);
      continue;
    }
    flush();
    DrawAlone(painter, place(begin), c);
  }
  while (run.endsWith(' ')) run.chop(1);
  flush();
}

// In the middle of its columns, narrowed where it is wider.
void RowPainter::DrawAlone(QPainter& painter, QPointF place, const TextChar& c) const {
  const qreal room = column_ * c.columns;
  const bool is_letter = IsControlSymbol(c.character) && c.character != kTabSymbol &&
                         !metrics_.inFontUcs4(c.character);
  const bool is_tab = c.character == kTabSymbol;
  const QString text = ToQString(is_tab ? U'→' : is_letter ? LetterOf(c.character) : c.character);
  const qreal advance = metrics_.horizontalAdvance(text);
  painter.save();
  painter.translate(place);
  if (is_letter) {
    painter.setPen(QPen(painter.pen().color(), column_ / 10));
    painter.drawRect(QRectF(column_ / 20, -metrics_.ascent() * 0.9, room - column_ / 10,
                            metrics_.ascent() * 1.05));
    painter.scale(0.7, 0.7);
    painter.drawText(QPointF((room / 0.7 - advance) / 2, -metrics_.ascent() * 0.1), text);
  } else if (advance > room) {
    painter.scale(room / advance, 1);
    painter.drawText(QPointF(0, 0), text);
  } else {
    painter.drawText(QPointF((room - advance) / 2, 0), text);
  }
  painter.restore();
}

void RowPainter::Underline(QPainter& painter, QPointF origin, size_t first, size_t end,
                           const QColor& color) const {
  const qreal thickness = std::max<qreal>(row_ / 12, 1);
  painter.fillRect(
      QRectF(origin.x() + column_ * static_cast<qreal>(first), origin.y() + row_ - thickness,
             column_ * static_cast<qreal>(end - first), thickness),
      color);
}

}  // namespace ledrix
