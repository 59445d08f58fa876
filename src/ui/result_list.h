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
  // The outputs of the selected entries, each once, in the order of the list.
  std::vector<NativePath> SelectedOutputs() const;
  // The current entry's when it is selected, otherwise the first selected one's; empty without any.
  NativePath SelectedOutput() const;
  // Goes to the next entry, or the one before, that tells of a failure, round the end of the list.
  void GoToFailure(bool forward);

 protected:
  // Ctrl+C copies the lines of the selected entries.
  void keyPressEvent(QKeyEvent* event) override;

 private:
  std::vector<int> SelectedRows() const;

  ResultListModel model_;
};

}  // namespace ledrix
