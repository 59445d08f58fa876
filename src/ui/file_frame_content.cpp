// What a side shows: its drive, its folders, its files and what is selected.
#include <QComboBox>
#include <QItemSelection>
#include <QLineEdit>
#include <algorithm>
#include <set>

#include "text/ascii.h"
#include "text/name_pattern.h"
#include "ui/drive_box.h"
#include "ui/file_frame.h"
#include "ui/file_view.h"
#include "ui/folder_list.h"
#include "ui/qt_text.h"

namespace ledrix {
namespace {

// The file-type filter of an entry; "*.*" stands for every name, also one without a dot.
class NameFilter {
 public:
  explicit NameFilter(const std::string& entry)
      : patterns_(FilterPatterns(entry)), list_(patterns_, LetterCase::kIgnore) {
    const std::vector<std::string> pieces = SplitAt(patterns_, ';');
    takes_all_ = std::find(pieces.begin(), pieces.end(), "*.*") != pieces.end();
  }
  bool Takes(const FolderEntry& entry) const {
    return entry.info.kind == FileKind::kRegular && (takes_all_ || list_.Matches(entry.name));
  }

 private:
  std::string patterns_;
  PatternList list_;
  bool takes_all_ = false;
};

}  // namespace

void FileFrame::OpenFolder(const NativePath& folder) {
  hooks_.folder_opens();
  ShowFolder(folder);
}

void FileFrame::ShowFolder(const NativePath& folder) {
  NativePath existing = AddBackslash(folder);
  while (!IsFolder(existing) && existing.bytes().size() > 1) {
    existing = DirOf(StripBackslash(existing));
  }
  folder_ = existing;
  std::vector<FolderEntry> entries = ReadOpenFolder();
  std::vector<std::string> subfolders;
  for (const FolderEntry& entry : entries) {
    if (entry.info.kind == FileKind::kFolder) subfolders.push_back(entry.name);
  }
  inDirBox->SetFolders(folder_, subfolders);
  inDrive->ShowDriveOf(folder_);
  FillFiles(std::move(entries));
}

std::vector<FolderEntry> FileFrame::ReadOpenFolder() {
  Result<std::vector<FolderEntry>> entries = ReadFolder(
      folder_, [] {}, BadEntry::kIsLeftOut);
  if (entries.ok()) return std::move(entries.value());
  hooks_.refused(PathToUtf8(folder_) + ": " + DescribeError(entries.error()));
  return {};
}

void FileFrame::FillFiles(std::vector<FolderEntry> files) {
  const NameFilter filter(filter_entry());
  std::erase_if(files,
                [](const FolderEntry& entry) { return entry.info.kind != FileKind::kRegular; });
  const size_t hidden =
      std::erase_if(files, [&](const FolderEntry& entry) { return !filter.Takes(entry); });
  inListView->ShowHidden(static_cast<int>(hidden));
  table_.SetFiles(std::move(files));
  if (sort_column_ >= 0) table_.sort(sort_column_, sort_order_);
  UpdatePathText();
}

FileList FileFrame::FilesOf(const NativePath& folder) const {
  const NameFilter filter(filter_entry());
  FileList list;
  const Result<std::vector<FolderEntry>> entries = ReadFolder(
      folder, [] {}, BadEntry::kIsLeftOut);
  if (!entries.ok()) return list;
  for (const FolderEntry& entry : entries.value()) {
    if (filter.Takes(entry)) list.entries.push_back({entry.name, false});
  }
  return list;
}

void FileFrame::Refresh() {
  const auto name_at = [this](const QModelIndex& index) {
    return index.isValid() ? table_.NameAt(index.row()) : std::string();
  };
  const std::string current = name_at(inListView->currentIndex());
  const std::string uppermost = name_at(inListView->indexAt({0, 0}));
  const std::vector<std::string> names = SelectedNames();
  const std::set<std::string> selected(names.begin(), names.end());
  inDrive->Fill();
  ShowFolder(folder_);
  std::vector<bool> flags(static_cast<size_t>(table_.rows()));
  for (int row = 0; row < table_.rows(); ++row) {
    flags[static_cast<size_t>(row)] = selected.count(table_.NameAt(row)) > 0;
  }
  const int current_row = table_.RowOf(current);
  inListView->selectionModel()->setCurrentIndex(table_.index(current_row, 0),
                                                QItemSelectionModel::NoUpdate);
  SelectRows(flags);
  inListView->scrollTo(table_.index(table_.RowOf(uppermost), 0), QAbstractItemView::PositionAtTop);
}

void FileFrame::OpenTypedPath() {
  const NativePath path = MakeAbsolute(ToNativePath(inTextFile->text().trimmed()));
  if (const Result<FileInfo> info = GetFileInfo(path); !info.ok()) {
    hooks_.refused(PathToUtf8(path) + ": " + DescribeError(info.error()));
    inTextFile->selectAll();
    return;
  }
  OpenDropped(path);
  UpdatePathText();
}

void FileFrame::OpenDropped(const NativePath& path) {
  const bool is_folder = IsFolder(path);
  OpenFolder(is_folder ? path : DirOf(path));
  const std::string name = is_folder ? "" : FileNameOf(path);
  // What was asked for is shown, whatever the filter says.
  const bool hidden =
      is_folder ? table_.rows() == 0 : table_.RowOf(name) < 0 && GetFileInfo(path).ok();
  if (hidden) {
    inCombo->setCurrentIndex(inCombo->count() - 1);  // the entry that shows every file
    FillFiles(ReadOpenFolder());
  }
  const int row = is_folder ? -1 : table_.RowOf(name);
  if (row >= 0) inListView->setCurrentIndex(table_.index(row, 0));
}

NativePath FileFrame::HighlightedFolder() const {
  return inDirBox->highlighted();
}

void FileFrame::HighlightOpenFolder() {
  if (IsOn(options_.DirBoxSClick)) inDirBox->HighlightOpen();
}

void FileFrame::SetFilters(int selected) {
  inCombo->clear();
  for (const std::string& entry : FilterEntries(options_, side_))
    inCombo->addItem(ToQString(entry));
  inCombo->setCurrentIndex(selected >= 0 && selected < inCombo->count() ? selected : 0);
}

void FileFrame::RenewFilters() {
  const QString before = inCombo->currentText();
  SetFilters(inCombo->currentIndex());
  const int same = inCombo->findText(before);
  if (same >= 0) inCombo->setCurrentIndex(same);
  if (inCombo->currentText() != before) FillFiles(ReadOpenFolder());
}

int FileFrame::filter_index() const {
  return inCombo->currentIndex();
}

std::string FileFrame::filter_entry() const {
  return ToUtf8(inCombo->currentText());
}

size_t FileFrame::selected_count() const {
  int count = 0;
  for (const QItemSelectionRange& range : inListView->selectionModel()->selection()) {
    count += range.height();
  }
  return static_cast<size_t>(count);
}

FileSide FileFrame::Snapshot() const {
  FileSide side{folder_, filter_entry(), {}};
  side.files.entries.reserve(static_cast<size_t>(table_.rows()));
  for (int row = 0; row < table_.rows(); ++row) {
    side.files.entries.push_back({table_.NameAt(row), false});
  }
  for (const QItemSelectionRange& range : inListView->selectionModel()->selection()) {
    for (int row = range.top(); row <= range.bottom(); ++row) {
      side.files.entries[static_cast<size_t>(row)].selected = true;
    }
  }
  const QModelIndex current = inListView->currentIndex();
  if (current.isValid()) side.files.current = static_cast<size_t>(current.row());
  return side;
}

FileSide FileFrame::Brief() const {
  FileSide side{folder_, filter_entry(), {}};
  if (selected_count() != 1) return side;
  const int row = inListView->selectionModel()->selection().first().top();
  side.files.entries.push_back({table_.NameAt(row), true});
  return side;
}

std::vector<std::string> FileFrame::SelectedNames() const {
  std::vector<std::string> names;
  for (FileList::Entry& entry : Snapshot().files.entries) {
    if (entry.selected) names.push_back(std::move(entry.name));
  }
  return names;
}

void FileFrame::Select(const FileList& list) {
  std::vector<bool> flags;
  flags.reserve(list.entries.size());
  for (const FileList::Entry& entry : list.entries) flags.push_back(entry.selected);
  SelectRows(flags);
  const auto first = std::find(flags.begin(), flags.end(), true);
  if (first == flags.end()) return;
  inListView->scrollTo(table_.index(static_cast<int>(first - flags.begin()), 0));
}

void FileFrame::SelectRows(const std::vector<bool>& selected) {
  QItemSelection selection;
  const int rows = std::min(static_cast<int>(selected.size()), table_.rows());
  for (int row = 0; row < rows; ++row) {
    if (!selected[static_cast<size_t>(row)]) continue;
    const int first = row;
    while (row + 1 < rows && selected[static_cast<size_t>(row) + 1]) ++row;
    selection.append(
        QItemSelectionRange(table_.index(first, 0), table_.index(row, FileTable::kColumns - 1)));
  }
  quiet_ = true;
  QItemSelectionModel& model = *inListView->selectionModel();
  model.clearSelection();
  model.select(selection, QItemSelectionModel::Select);
  quiet_ = false;
  UpdatePathText();
}

void FileFrame::InvertSelection() {
  std::vector<bool> flags;
  for (const FileList::Entry& entry : Snapshot().files.entries) flags.push_back(!entry.selected);
  SelectRows(flags);
}

void FileFrame::ForgetGone(const std::vector<std::string>& names) {
  for (const std::string& name : names) {
    const int row = table_.RowOf(name);
    if (row >= 0 && !GetFileInfo(folder_ + name).ok()) table_.Remove(row);
  }
  UpdatePathText();
}

void FileFrame::UpdatePathText() {
  const QItemSelection selection = inListView->selectionModel()->selection();
  const bool single = selected_count() == 1;
  inTextFile->setText(
      ToQString(single ? folder_ + table_.NameAt(selection.first().top()) : folder_));
  hooks_.selection_changed();
}

}  // namespace ledrix
