#include "ui/result_list.h"

#include <QMimeData>
#include <QUrl>

#include "jobs/output_preview.h"
#include "platform/files.h"
#include "ui/qt_text.h"
#include "ui/roomy_rows.h"

namespace ledrix {
namespace {

// A path's own bytes reach the other program, whatever they are.
QUrl ToUrl(const NativePath& path) {
  const QByteArray bytes = QByteArray::fromStdString(path.bytes()).toPercentEncoding("/");
  return QUrl::fromEncoded("file://" + bytes, QUrl::StrictMode);
}

}  // namespace

void ResultListModel::Append(const std::vector<std::string>& lines) {
  if (lines.empty()) return;
  const int first = static_cast<int>(lines_.size());
  beginInsertRows({}, first, first + static_cast<int>(lines.size()) - 1);
  lines_.insert(lines_.end(), lines.begin(), lines.end());
  endInsertRows();
}

void ResultListModel::Clear() {
  beginResetModel();
  lines_.clear();
  endResetModel();
}

QVariant ResultListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || role != Qt::DisplayRole) return {};
  return ToQString(NativePath(lines_[static_cast<size_t>(index.row())]));
}

Qt::ItemFlags ResultListModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags flags = QAbstractListModel::flags(index);
  return index.isValid() ? flags | Qt::ItemIsDragEnabled : flags;
}

QStringList ResultListModel::mimeTypes() const {
  return {"text/uri-list"};
}

QMimeData* ResultListModel::mimeData(const QModelIndexList& indexes) const {
  QList<QUrl> urls;
  for (const QModelIndex& index : indexes) {
    const NativePath path = OutputOfEntry(lines_, static_cast<size_t>(index.row()));
    if (GetFileInfo(path).ok()) urls.append(ToUrl(path));
  }
  if (urls.isEmpty()) return nullptr;
  auto* const data = new QMimeData;
  data->setUrls(urls);
  return data;
}

ResultList::ResultList(QWidget* parent) : QListView(parent) {
  setModel(&model_);
  setItemDelegate(new RoomyRows(this));
  setUniformItemSizes(true);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setDragEnabled(true);
  setDragDropMode(QAbstractItemView::DragOnly);
}

void ResultList::Append(const std::vector<std::string>& lines) {
  model_.Append(lines);
  setCurrentIndex(model_.index(model_.rowCount({}) - 1));
}

NativePath ResultList::CurrentOutput() const {
  const QModelIndex index = currentIndex();
  return index.isValid() ? OutputOfEntry(model_.lines(), static_cast<size_t>(index.row()))
                         : NativePath();
}

}  // namespace ledrix
