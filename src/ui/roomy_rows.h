// Rows of lists with some room above and below their text.
#pragma once

#include <QStyledItemDelegate>

namespace ledrix {

class RoomyRows : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    return QStyledItemDelegate::sizeHint(option, index) + QSize(0, option.fontMetrics.height() / 3);
  }
};

}  // namespace ledrix
