// A side's folder list: the folders above the open one, the open one itself, its subfolders.
#pragma once

#include <QAbstractListModel>
#include <QListView>
#include <functional>
#include <string>
#include <vector>

#include "platform/native_path.h"

namespace ledrix {

class FolderListModel : public QAbstractListModel {
 public:
  // `open` ends in a separator; subfolders are names.
  void SetFolders(const NativePath& open, const std::vector<std::string>& subfolders);

  // The path of a row, with a separator at its end.
  const NativePath& PathAt(int row) const { return rows_[static_cast<size_t>(row)].path; }
  // The row of a path, or -1.
  int RowOf(const NativePath& path) const;
  int open_row() const { return open_row_; }
  int DepthAt(int row) const { return rows_[static_cast<size_t>(row)].depth; }

  int rowCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
  }
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  struct Row {
    NativePath path;
    std::string name;
    int depth;  // folders above it
  };
  std::vector<Row> rows_;
  int open_row_ = 0;
};

class FolderList : public QListView {
 public:
  explicit FolderList(QWidget* parent = nullptr);

  // The folder that is open already keeps what is highlighted and in sight.
  void SetFolders(const NativePath& open, const std::vector<std::string>& subfolders);
  // The folder that is highlighted, with a separator at its end; otherwise the open one.
  NativePath highlighted() const;
  void HighlightOpen() { setCurrentIndex(model_.index(model_.open_row())); }

  // Called with the folder that a click (single or double, as `single` says) or the Enter key
  // opens, and whether Shift was held.
  void OnOpen(std::function<void(const NativePath& folder, bool shift)> hook) {
    on_open_ = std::move(hook);
  }
  // Asked at each click: true when a single one opens.
  void OpensOnSingleClick(std::function<bool()> hook) { single_ = std::move(hook); }

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  void Open(const QModelIndex& index, bool shift);

  FolderListModel model_;
  std::function<void(const NativePath&, bool)> on_open_;
  std::function<bool()> single_;
};

}  // namespace ledrix
