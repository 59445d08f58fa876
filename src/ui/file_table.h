// The model of a side's file list: names and modification times.
#pragma once

#include <QAbstractTableModel>
#include <string>
#include <vector>

#include "platform/folders.h"

namespace ledrix {

class FileTable : public QAbstractTableModel {
 public:
  enum Column { kName, kModified, kColumns };

  // Replaces the rows.
  void SetFiles(std::vector<FolderEntry> files);
  // Takes out one row, counted from 0.
  void Remove(int row);

  int rows() const { return static_cast<int>(files_.size()); }
  const std::string& NameAt(int row) const { return files_[static_cast<size_t>(row)].name; }
  // The row of this very name, or -1.
  int RowOf(const std::string& name) const;

  int rowCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : rows(); }
  int columnCount(const QModelIndex& /*parent*/) const override { return kColumns; }
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  // By name without regard to letter case, or by time; equal ones keep their order.
  void sort(int column, Qt::SortOrder order) override;

 private:
  std::vector<size_t> Order(int column, Qt::SortOrder order) const;

  std::vector<FolderEntry> files_;
};

}  // namespace ledrix
