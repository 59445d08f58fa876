// The result list: two entries for each output of a job.
#pragma once

#include <QAbstractListModel>
#include <QListView>
#include <string>
#include <vector>

#include "platform/native_path.h"

namespace ledrix {

class ResultListModel : public QAbstractListModel {
 public:
  void Append(const std::vector<std::string>& lines);
  void Clear();
  const std::vector<std::string>& lines() const { return lines_; }

  int rowCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : static_cast<int>(lines_.size());
  }
  QVariant data(const QModelIndex& index, int role) const override;
  // An entry is dragged as the file that it tells of.
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  QStringList mimeTypes() const override;
  QMimeData* mimeData(const QModelIndexList& indexes) const override;
  Qt::DropActions supportedDragActions() const override { return Qt::CopyAction; }

 private:
  std::vector<std::string> lines_;
};

class ResultList : public QListView {
 public:
  explicit ResultList(QWidget* parent = nullptr);

  // Adds entries and makes the last one current.
  void Append(const std::vector<std::string>& lines);
  void Clear() { model_.Clear(); }
  // The output of the current entry; empty when there is none.
  NativePath CurrentOutput() const;

 private:
  ResultListModel model_;
};

}  // namespace ledrix
