#include "ui/folder_list.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <algorithm>

#include "settings/option_record.h"
#include "text/ascii.h"
#include "ui/later.h"
#include "ui/qt_text.h"
#include "ui/roomy_rows.h"

namespace ledrix {
namespace {

// Draws each folder further in than the one above it.
class IndentedFolder : public RoomyRows {
 public:
  IndentedFolder(const FolderListModel& model, QObject* parent)
      : RoomyRows(parent), model_(model) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    QStyleOptionViewItem shifted = option;
    shifted.rect.setLeft(shifted.rect.left() + IndentOf(option, index));
    QStyledItemDelegate::paint(painter, shifted, index);
  }

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    return RoomyRows::sizeHint(option, index) + QSize(IndentOf(option, index), 0);
  }

 private:
  // Deep trees stay readable in a narrow list.
  int IndentOf(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    constexpr int kDeepest = 12;
    return std::min(model_.DepthAt(index.row()), kDeepest) * option.fontMetrics.height() / 2;
  }

  const FolderListModel& model_;
};

}  // namespace

void FolderListModel::SetFolders(const NativePath& open,
                                 const std::vector<std::string>& subfolders) {
  beginResetModel();
  rows_.clear();
  std::string path = "/";
  rows_.push_back({NativePath(path), path, 0});
  for (const std::string& name : SplitAt(open.bytes(), '/')) {
    if (name.empty()) continue;
    path += name + "/";
    rows_.push_back({NativePath(path), name, static_cast<int>(rows_.size())});
  }
  open_row_ = static_cast<int>(rows_.size()) - 1;
  const int depth = open_row_ + 1;
  rows_.reserve(rows_.size() + subfolders.size());
  for (const std::string& name : subfolders) {
    rows_.push_back({NativePath(path + name + "/"), name, depth});
  }
  endResetModel();
}

int FolderListModel::RowOf(const NativePath& path) const {
  const auto found =
      std::find_if(rows_.begin(), rows_.end(), [&](const Row& row) { return row.path == path; });
  return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

QVariant FolderListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= static_cast<int>(rows_.size())) return {};
  const Row& row = rows_[static_cast<size_t>(index.row())];
  if (role == Qt::DisplayRole) return ToQString(NativePath(row.name));
  if (role == Qt::ToolTipRole) return ToQString(row.path);
  if (role == Qt::DecorationRole) {
    const bool is_open = index.row() <= open_row_;
    return QApplication::style()->standardIcon(is_open ? QStyle::SP_DirOpenIcon
                                                       : QStyle::SP_DirClosedIcon);
  }
  return {};
}

FolderList::FolderList(QWidget* parent) : QListView(parent) {
  setModel(&model_);
  setItemDelegate(new IndentedFolder(model_, this));
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  connect(this, &QListView::clicked, this, [this](const QModelIndex& index) {
    if (!single_ || single_()) {
      Open(index, QApplication::keyboardModifiers().testFlag(Qt::ShiftModifier));
    }
  });
  connect(this, &QListView::doubleClicked, this, [this](const QModelIndex& index) {
    if (single_ && !single_()) {
      Open(index, QApplication::keyboardModifiers().testFlag(Qt::ShiftModifier));
    }
  });
}

void FolderList::SetFolders(const NativePath& open, const std::vector<std::string>& subfolders) {
  const bool is_refresh = model_.rowCount({}) > 0 && model_.PathAt(model_.open_row()) == open;
  const int place = verticalScrollBar()->value();
  const NativePath highlighted_before = is_refresh ? highlighted() : open;
  model_.SetFolders(open, subfolders);
  const int row = model_.RowOf(highlighted_before);
  const QModelIndex shown = model_.index(row < 0 ? model_.open_row() : row);
  setCurrentIndex(shown);
  scrollTo(shown, QAbstractItemView::PositionAtCenter);
  if (is_refresh) verticalScrollBar()->setValue(place);
}

NativePath FolderList::highlighted() const {
  const QModelIndex index = currentIndex();
  return model_.PathAt(index.isValid() ? index.row() : model_.open_row());
}

void FolderList::Open(const QModelIndex& index, bool shift) {
  if (!index.isValid() || !on_open_) return;
  // The rows are replaced only when the view is done with its click.
  const NativePath path = model_.PathAt(index.row());
  DoLater(*this, [this, path, shift] { on_open_(path, shift); });
}

void FolderList::mousePressEvent(QMouseEvent* event) {
  // Beside the folders there is nothing to highlight, and what is highlighted stays so.
  if (indexAt(event->position().toPoint()).isValid()) QListView::mousePressEvent(event);
}

void FolderList::mouseDoubleClickEvent(QMouseEvent* event) {
  // Where a single click opens, the second one would hit whatever moved below the mouse.
  const bool opened = !single_ || single_();
  if (!opened) QListView::mouseDoubleClickEvent(event);
}

void FolderList::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    Open(currentIndex(), event->modifiers().testFlag(Qt::ShiftModifier));
    return;
  }
  QListView::keyPressEvent(event);
}

}  // namespace ledrix
