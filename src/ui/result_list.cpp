#include "ui/result_list.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMimeData>
#include <QUrl>
#include <algorithm>
#include <set>

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
  setTextElideMode(Qt::ElideMiddle);  // a path's end tells more than its middle
  setSelectionMode(QAbstractItemView::ExtendedSelection);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setDragEnabled(true);
  setDragDropMode(QAbstractItemView::DragOnly);
}

void ResultList::Append(const std::vector<std::string>& lines) {
  model_.Append(lines);
  setCurrentIndex(model_.index(model_.rowCount({}) - 1));
}

std::vector<int> ResultList::SelectedRows() const {
  std::vector<int> rows;
  for (const QModelIndex& index : selectedIndexes()) rows.push_back(index.row());
  std::sort(rows.begin(), rows.end());
  return rows;
}

std::vector<NativePath> ResultList::SelectedOutputs() const {
  std::vector<NativePath> outputs;
  std::set<std::string> seen;
  for (const int row : SelectedRows()) {
    const NativePath path = OutputOfEntry(model_.lines(), static_cast<size_t>(row));
    if (!path.empty() && seen.insert(path.bytes()).second) outputs.push_back(path);
  }
  return outputs;
}

NativePath ResultList::SelectedOutput() const {
  const QModelIndex current = currentIndex();
  const std::vector<int> rows = SelectedRows();
  if (rows.empty()) return {};
  const bool is_selected = current.isValid() && selectionModel()->isSelected(current);
  return OutputOfEntry(model_.lines(),
                       static_cast<size_t>(is_selected ? current.row() : rows.front()));
}

void ResultList::GoToFailure(bool forward) {
  const int rows = model_.rowCount({});
  const int step = forward ? 1 : rows - 1;
  int row = currentIndex().isValid() ? currentIndex().row() : (forward ? rows - 1 : 0);
  for (int looked = 0; looked < rows; ++looked) {
    row = (row + step) % rows;
    if (!TellsOfFailure(model_.lines()[static_cast<size_t>(row)])) continue;
    setFocus(Qt::ShortcutFocusReason);
    setCurrentIndex(model_.index(row));
    scrollTo(model_.index(std::max(row - 1, 0)));  // its path is the entry above
    return;
  }
}

void ResultList::keyPressEvent(QKeyEvent* event) {
  if (!event->matches(QKeySequence::Copy)) {
    QListView::keyPressEvent(event);
    return;
  }
  QStringList lines;
  for (const int row : SelectedRows()) lines.append(model_.index(row).data().toString());
  if (!lines.isEmpty()) QGuiApplication::clipboard()->setText(lines.join('\n'));
}

}  // namespace ledrix
