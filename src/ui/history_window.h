// The window of the folders that jobs touched lately.
#pragma once

#include <QDialog>
#include <array>
#include <functional>
#include <vector>

#include "jobs/run_log.h"
#include "platform/native_path.h"
#include "run/side.h"
#include "settings/settings_store.h"

class QPushButton;
class QTreeWidget;

namespace ledrix {

// Each showing reads the run log anew. Closed by its own commands (QDialog::Accepted) the window
// writes the list back; its close box and the Escape key (QDialog::Rejected) drop what was changed.
// There is one thread, the user interface's.
class LedrixFr : public QDialog {
 public:
  // Opens a folder on a side of the main window.
  using OpenFolder = std::function<void(Side side, const NativePath& folder)>;

  // `active_side` is the side that a double click and the Enter key open. `log` and `store` must
  // outlive the window; its size is put into the store, which is not saved here.
  LedrixFr(RunLog& log, SettingsStore& store, Side active_side, OpenFolder open_folder,
           QWidget* parent = nullptr);

  void done(int result) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 protected:
  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void SetUpList();
  void LayOut();
  void TakeStoredSize();
  void Connect();
  void LoadHistory();
  // Counted from 0; -1 when no entry is selected.
  int SelectedRow() const;
  // False when no entry is selected.
  bool OpenSelected(Side side);
  void OpenSelectedAndClose();
  void DeleteSelected();
  void Clear();

  QTreeWidget* const DirList;
  const std::array<QPushButton*, 2> BtnDirOpen;
  QPushButton* const BtnClear;
  QPushButton* const BtnClose;

  RunLog& log_;
  SettingsStore& store_;
  Side active_side_;
  OpenFolder open_folder_;
  std::vector<HistoryEntry> entries_;  // one a row of the list, in its order
};

}  // namespace ledrix
