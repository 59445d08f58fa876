#include "ui/file_view.h"

#include <QHeaderView>
#include <QPainter>
#include <algorithm>

#include "ui/file_table.h"
#include "ui/roomy_rows.h"

namespace ledrix {
namespace {

constexpr int kLeastNameCharacters = 10;

}  // namespace

FileView::FileView(FileTable& table) {
  setModel(&table);
  setItemDelegate(new RoomyRows(this));
  setRootIsDecorated(false);
  setUniformRowHeights(true);
  setItemsExpandable(false);
  setAllColumnsShowFocus(true);
  setSelectionMode(QAbstractItemView::ExtendedSelection);
  setSelectionBehavior(QAbstractItemView::SelectRows);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setTextElideMode(Qt::ElideMiddle);
  header()->setSectionsClickable(true);
  header()->setSectionsMovable(false);
  header()->setStretchLastSection(false);
  header()->setSortIndicatorShown(false);
  connect(header(), &QHeaderView::sectionResized, this,
          [this](int column, int /*before*/, int width) { FillBeside(column, width); });
}

int FileView::DateWidth() const {
  return fontMetrics().horizontalAdvance("0000/00/00 00:00") + 4 * fontMetrics().averageCharWidth();
}

void FileView::FillBeside(int column, int width) {
  if (filling_ || !isVisible()) return;
  filling_ = true;
  const bool is_name = column == FileTable::kName;
  const int least = is_name ? DateWidth() : kLeastNameCharacters * fontMetrics().averageCharWidth();
  header()->resizeSection(is_name ? FileTable::kModified : FileTable::kName,
                          std::max(viewport()->width() - width, least));
  filling_ = false;
}

void FileView::resizeEvent(QResizeEvent* event) {
  QTreeView::resizeEvent(event);
  FillBeside(FileTable::kModified, header()->sectionSize(FileTable::kModified));
}

void FileView::paintEvent(QPaintEvent* event) {
  QTreeView::paintEvent(event);
  if (hidden_ == 0 || model()->rowCount() > 0) return;
  QPainter painter(viewport());
  QColor faint = palette().color(QPalette::Text);  // seen on any desktop's colours
  faint.setAlpha(160);
  painter.setPen(faint);
  painter.drawText(viewport()->rect().adjusted(8, 8, -8, -8),
                   Qt::AlignCenter | Qt::TextWrapAnywhere,
                   QString("ﾌｧｲﾙﾀｲﾌﾟの絞り込みで %1 ファイルが隠れています").arg(hidden_));
}

}  // namespace ledrix
