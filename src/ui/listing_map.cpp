#include "ui/listing_map.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

namespace ledrix {

ListingMap::ListingMap(const ListingView& view, QWidget* parent) : QWidget(parent), view_(view) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
  setFixedWidth(18);
}

void ListingMap::Show(const ViewedFile& file) {
  file_ = &file;
  setVisible(file.shape() != nullptr);
  update();
}

// Deletions stand in the left third, changes in the middle, additions in the right third.
void ListingMap::paintEvent(QPaintEvent* /*event*/) {
  const ListingColors colors = MakeListingColors(palette(), view_.scheme());
  QPainter painter(this);
  painter.fillRect(rect(), colors.back);
  if (file_ == nullptr || file_->lines() == 0) return;
  const std::vector<PixelRow> rows = PixelRows();
  const int third = (width() - 4) / 3;
  for (int y = 0; y < height(); ++y) {
    const PixelRow& row = rows[static_cast<size_t>(y)];
    if (row.deleted) painter.fillRect(2, y, third, 1, colors.deleted.bar);
    if (row.changed) painter.fillRect(2 + third, y, third, 1, colors.changed.bar);
    if (row.added) painter.fillRect(2 + 2 * third, y, third, 1, colors.added.bar);
  }
  const double scale = height() / static_cast<double>(file_->lines());
  const auto top = static_cast<double>(view_.top_line()) * scale;
  const auto shown = std::max(3.0, static_cast<double>(view_.visible_lines()) * scale);
  painter.setPen(colors.text);
  painter.drawRect(QRectF(0, top, width() - 1, std::min(shown, height() - top - 1)));
}

std::vector<ListingMap::PixelRow> ListingMap::PixelRows() const {
  std::vector<PixelRow> rows(static_cast<size_t>(height()));
  const double scale = height() / static_cast<double>(file_->lines());
  for (const ListingBlock& block : file_->blocks()) {
    const auto begin = static_cast<int>(static_cast<double>(block.first) * scale);
    const auto end = static_cast<int>(static_cast<double>(block.end) * scale);
    for (int y = begin; y < std::min(std::max(end, begin + 2), height()); ++y) {
      PixelRow& row = rows[static_cast<size_t>(y)];
      row.changed = row.changed || block.changed > 0;
      row.added = row.added || block.added > 0;
      row.deleted = row.deleted || block.deleted > 0;
    }
  }
  return rows;
}

void ListingMap::mousePressEvent(QMouseEvent* event) {
  Jump(event->pos());
}

void ListingMap::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons().testFlag(Qt::LeftButton)) Jump(event->pos());
}

void ListingMap::Jump(const QPoint& place) {
  if (file_ == nullptr || !on_jump_ || height() == 0) return;
  const double part = std::clamp(place.y() / static_cast<double>(height()), 0.0, 1.0);
  on_jump_(static_cast<int64_t>(part * static_cast<double>(file_->lines())));
}

}  // namespace ledrix
