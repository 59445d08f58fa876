#include "ui/file_table.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "jobs/file_sides.h"
#include "platform/local_time.h"
#include "ui/qt_text.h"

namespace ledrix {

namespace {

// A name that is cut off shows whole in its tool tip.
bool IsShown(int role, int column) {
  return role == Qt::DisplayRole || (role == Qt::ToolTipRole && column == FileTable::kName);
}

}  // namespace

void FileTable::SetFiles(std::vector<FolderEntry> files) {
  beginResetModel();
  files_ = std::move(files);
  endResetModel();
}

void FileTable::Remove(int row) {
  beginRemoveRows({}, row, row);
  files_.erase(files_.begin() + row);
  endRemoveRows();
}

int FileTable::RowOf(const std::string& name) const {
  const auto found = std::find_if(files_.begin(), files_.end(),
                                  [&](const FolderEntry& file) { return file.name == name; });
  return found == files_.end() ? -1 : static_cast<int>(found - files_.begin());
}

QVariant FileTable::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rows() || !IsShown(role, index.column())) return {};
  const FolderEntry& file = files_[static_cast<size_t>(index.row())];
  if (index.column() == kName) return ToQString(NativePath(file.name));
  return ToQString(FormatStamp(ToLocalTime(file.info.modified)));
}

QVariant FileTable::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return QString(section == kName ? "ﾌｧｲﾙ名" : "更新日時");
}

std::vector<size_t> FileTable::Order(int column, Qt::SortOrder order) const {
  std::vector<size_t> places(files_.size());
  std::iota(places.begin(), places.end(), size_t{0});
  const auto sort_by = [&](const auto& keys) {
    std::stable_sort(places.begin(), places.end(), [&](size_t a, size_t b) {
      return order == Qt::AscendingOrder ? keys[a] < keys[b] : keys[b] < keys[a];
    });
  };
  if (column == kName) {
    std::vector<std::u32string> keys;
    keys.reserve(files_.size());
    for (const FolderEntry& file : files_) keys.push_back(FoldedName(file.name));
    sort_by(keys);
  } else {
    std::vector<std::pair<time_t, long>> keys;
    keys.reserve(files_.size());
    for (const FolderEntry& file : files_) {
      keys.emplace_back(file.info.modified.tv_sec, file.info.modified.tv_nsec);
    }
    sort_by(keys);
  }
  return places;
}

void FileTable::sort(int column, Qt::SortOrder order) {
  if (column < 0) return;
  emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
  const std::vector<size_t> places = Order(column, order);
  std::vector<int> new_rows(places.size());
  std::vector<FolderEntry> sorted;
  sorted.reserve(places.size());
  for (size_t i = 0; i < places.size(); ++i) {
    new_rows[places[i]] = static_cast<int>(i);
    sorted.push_back(std::move(files_[places[i]]));
  }
  files_ = std::move(sorted);
  const QModelIndexList before = persistentIndexList();
  QModelIndexList after;
  after.reserve(before.size());
  for (const QModelIndex& old : before) {
    after.append(index(new_rows[static_cast<size_t>(old.row())], old.column()));
  }
  changePersistentIndexList(before, after);
  emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

}  // namespace ledrix
