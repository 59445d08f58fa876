// The main window: two sides, what is done with them, and the results.
#pragma once

#include <QMainWindow>
#include <array>

#include "jobs/file_sides.h"
#include "jobs/run_log.h"
#include "settings/pattern_slots.h"
#include "settings/settings_store.h"
#include "ui/choosers.h"
#include "ui/condition_menus.h"
#include "ui/main_menu.h"
#include "ui/popup_menu.h"
#include "ui/window_platform.h"

class QLabel;
class QPushButton;
class QSplitter;
class QTimer;
class QToolButton;

namespace ledrix {

class DesktopActions;
class FileFrame;
class OutputFrame;
class ResultList;

// The records and services of a run with windows. The owner makes one of each.
struct WindowProgram {
  OptionRecord& options;
  JobRecord& job;
  SettingsStore& store;  // loaded
  WindowPlatform& platform;
  DesktopActions& actions;
  NativePath folder;  // the program's own, with a separator at its end
};

class LedrixF0 : public QMainWindow {
 public:
  // Loads the options, the folders and the geometry of the last run. What the program refers to
  // must outlive the window.
  explicit LedrixF0(const WindowProgram& program);
  ~LedrixF0() override;

  // Opens a file's folder on a side and selects it there, or opens a folder.
  void OpenOnSide(int side, const NativePath& path);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  // Building, in main_window.cpp.
  void Build();
  QWidget* BuildMiddle();
  QWidget* BuildButtonRow();
  void BuildStatusBar();
  void ShowTrouble(const std::string& line);
  void ConnectMenu();
  void ConnectPopup();
  void LoadState();
  void SaveState();

  // Geometry, in main_window_layout.cpp.
  void RestoreGeometry();
  void StoreGeometry();
  void SetMode(int mode);
  void LayOut();
  void NoteSplitters();

  // Commands, in main_window_commands.cpp.
  void AlignFolders(int to_side, int from_side);
  void SwapFolders();
  void SelectNamesakesOf(int side);
  void SelectAllMatching();
  void FollowFolder(int side, const NativePath& from, const NativePath& to, bool shift);
  void Refresh();
  void ClearResults();
  void ShowVersion();
  void EditOptions();
  void ShowHistory(int side);
  void PressFolderButton(int side);
  void ReleaseFolderButton(int side);
  void ShowFolderMenu();
  void FillSendTo();
  void ClearSettingsAndEnd();
  void ApplyFont();
  void UpdatePreview();
  void ShowPopup(PopupSource source, int side, const QPoint& place);
  void ActivateFile(int side);
  void Open(const NativePath& path);
  void OpenPopupFile();
  void CopyToOtherSide();
  void DeletePopupFile();
  void OpenFolderInFileManager();
  void AddFolderToHistory();
  void CopyFolderList();
  void CopyFolderCompare();
  NativePath PopupFile() const;

  // Jobs, in main_window_jobs.cpp.
  FileSides Sides() const;
  void StartTextCompare();
  void StartDirCompare(CompareRange range);
  void StartDirEdit(int side, const NativePath& folder);
  void StartStepCount();
  void StartStepCsv();
  void RunJobOf(JobRequest request, const FileSides& sides);

  FileFrame& side(int index) const { return *sides_[static_cast<size_t>(index)]; }

  const WindowProgram program_;
  RunLog log_;
  PatternSlots patterns_;
  OutputChooser chooser_;

  MainMenu menu_;
  MatchMenu match_menu_;
  PatternMenu pattern_menu_;
  CharsetMenu charset_menu_;
  PopupMenu* POPMenu = nullptr;
  QMenu* POP_ChangeDir = nullptr;
  std::array<FileFrame*, 2> sides_{};
  QSplitter* splitter_ = nullptr;  // between the sides
  OutputFrame* ChkFrame = nullptr;
  std::array<QToolButton*, 3> BtnEQ{};
  std::array<QToolButton*, 3> BtnEQSel{};
  QPushButton* BtnRun = nullptr;
  QPushButton* BtnDirRun = nullptr;
  QPushButton* BtnClose = nullptr;
  QPushButton* BtnListClear = nullptr;
  QToolButton* BtnWinMode = nullptr;
  ResultList* OutList = nullptr;
  std::array<QLabel*, 3> panels_{};  // of the status bar
  QLabel* trouble_ = nullptr;        // a fourth one, shown when there is something to tell

  // Splitter mode 0 to 2, and where the bars are, in device-independent pixels.
  int RisizeMode = 0;
  int SplitterL = 0;
  int SplitterR = 0;
  int SplitterM = 0;

  int option_tab_ = 0;  // shown last, counted from 0
  PopupSource popup_source_ = PopupSource::kFileBox;
  int popup_side_ = 0;
  int active_side_ = 0;      // the side whose list was used last: 0 old, 1 new
  QTimer* Timer1 = nullptr;  // measures how long a folder button is held
  bool forget_ = false;      // the settings were cleared: nothing is saved
  bool busy_ = false;        // a job runs, or a file is copied
};

}  // namespace ledrix
