// One side of the main window: its drive, folder, filter and file lists, and its path.
#pragma once

#include <QGroupBox>
#include <array>
#include <functional>
#include <string>
#include <vector>

#include "jobs/file_sides.h"
#include "platform/services.h"
#include "ui/file_table.h"

class QComboBox;
class QLineEdit;
class QMenu;
class QToolButton;

namespace ledrix {

class DriveBox;
class FileView;
class FolderList;
class PaneSplitter;

class FileFrame : public QGroupBox {
 public:
  // What happens on the side and concerns the window. All are called from event handlers.
  struct Hooks {
    // The selection, and with it the path text, has changed.
    std::function<void()> selection_changed;
    // The user went from one folder to another in the folder list.
    std::function<void(const NativePath& from, const NativePath& to, bool shift)> folder_followed;
    std::function<void(const QPoint& place)> file_popup;    // in global coordinates
    std::function<void(const QPoint& place)> folder_popup;  // in global coordinates
    std::function<void()> file_activated;                   // a double click, or the Enter key
    std::function<void()> folder_button_pressed;
    std::function<void()> folder_button_released;  // over the button or not
    std::function<void()> folder_button_clicked;   // released over it
    std::function<void()> bar_moved;               // by the user
    std::function<void()> folder_opens;
    // A path or a folder could not be opened; concerns the user until the next folder opens.
    std::function<void(const std::string& line)> refused;
  };

  // `side` is 0 for old, 1 for new. `options` and `platform` must outlive the frame.
  FileFrame(Side side, const OptionRecord& options, PlatformServices& platform, Hooks hooks,
            QWidget* parent = nullptr);
  ~FileFrame() override;

  // Opens a folder, or the nearest one above it that exists, and clears the selection.
  void OpenFolder(const NativePath& folder);
  // Reads the drives, the open folder and its files again; the selection and what is in sight stay
  // where they can.
  void Refresh();
  // Opens a file's folder and selects the file, or opens a folder. A filter that hides the file, or
  // all of the folder, gives way to the one that shows every file.
  void OpenDropped(const NativePath& path);

  const NativePath& folder() const { return folder_; }  // ends in a separator
  // The folder highlighted in the folder list, with a separator at its end: after a click with
  // either button the one under the mouse.
  NativePath HighlightedFolder() const;
  // Highlights the open folder where a single click opens folders, so that no other one looks open.
  void HighlightOpenFolder();

  // Fills the filter list from the options and selects an entry, counted from 0; one that does not
  // exist becomes the first.
  void SetFilters(int selected);
  // Fills the filter list anew after a change of the options: the entry that was selected stays
  // when there still is one of its text, otherwise the one at its place.
  void RenewFilters();
  int filter_index() const;
  std::string filter_entry() const;

  // The side as plain data.
  FileSide Snapshot() const;
  // The same with no other files than the selected one when exactly one is: enough for a preview,
  // in a time that does not grow with the folder.
  FileSide Brief() const;
  // The files of a folder that the filter lets through, none of them selected.
  FileList FilesOf(const NativePath& folder) const;
  size_t selected_count() const;
  int file_count() const { return table_.rows(); }
  // The selected names in the order of the list.
  std::vector<std::string> SelectedNames() const;
  // The current entry's name when it is selected, otherwise the first selected one; empty without
  // any.
  std::string SelectedName() const { return SelectedFileName(Snapshot().files); }
  // Selects what is selected in `list`, whose entries are those of the file list in its order.
  void Select(const FileList& list);
  // Takes the entries out of the list whose files are gone.
  void ForgetGone(const std::vector<std::string>& names);

  void SetListFont(const QFont& font);
  void FocusPath();
  // The lists that take the focus, from left to right.
  std::array<QWidget*, 2> Panes() const;
  // Takes the folder button back out and shows a menu below it.
  void ShowBelowFolderButton(QMenu& menu);
  // Columns of the file list, counted from 0, and the place of the bar between the two lists: all
  // in device-independent pixels.
  int column_width(int column) const;
  int date_width() const;  // that a date needs
  void SetColumnWidth(int column, int width);
  int bar() const;
  void MoveBar(int place);
  void LetBarMove(bool movable);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void LayOut();
  void Connect();
  void ConnectFileList();
  void AcceptDrops();
  QWidget* BuildFolderPane();
  QWidget* BuildFilePane();
  void OpenTypedPath();
  void ShowFolder(const NativePath& folder);
  std::vector<FolderEntry> ReadOpenFolder();
  void FillFiles(std::vector<FolderEntry> entries);
  void UpdatePathText();
  bool HandleKey(int key, bool control);
  void InvertSelection();
  void SelectRows(const std::vector<bool>& selected);

  const Side side_;
  const OptionRecord& options_;
  const Hooks hooks_;

  FileTable table_;
  QLineEdit* const inTextFile;
  QToolButton* const BtnDirOpen;
  DriveBox* const inDrive;
  FolderList* const inDirBox;
  QComboBox* const inCombo;
  FileView* const inListView;
  PaneSplitter* const splitter_;

  NativePath folder_;
  int sort_column_ = -1;  // none: in byte order of the names
  Qt::SortOrder sort_order_ = Qt::AscendingOrder;
  bool quiet_ = false;  // selection changes are not told
};

}  // namespace ledrix
