// The main window: two sides, what is done with them, and the results.
#pragma once

#include <QMainWindow>

#include "jobs/run_log.h"
#include "settings/pattern_slots.h"
#include "ui/folder_button_menu.h"
#include "ui/job_starter.h"
#include "ui/list_popup.h"
#include "ui/main_keys.h"
#include "ui/main_menu.h"
#include "ui/side_pair.h"
#include "ui/splitter_bars.h"
#include "ui/status_panels.h"
#include "ui/window_program.h"
#include "ui/window_state.h"

class QPushButton;
class QToolButton;

namespace ledrix {

class OutputFrame;
class PaneSplitter;
class ResultList;

// Makes the parts of the window and tells each what concerns it; what they do is theirs.
class LedrixF0 : public QMainWindow {
 public:
  // Loads the options, the folders and the geometry of the last run. What the program refers to
  // must outlive the window.
  explicit LedrixF0(const WindowProgram& program);
  ~LedrixF0() override;

  // Opens a file's folder on a side and selects it there, or opens a folder.
  void OpenOnSide(Side side, const NativePath& path);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  MainMenu::Commands MenuCommands();
  FileFrame* MakeSide(Side side);
  QWidget* MakeRightPane();
  QWidget* MakeButtonRow();
  void LayOut();
  void Load();

  void SetBarMode(BarMode mode);
  void EditOptions();
  void ShowVersion();
  void ClearSettingsAndEnd();
  void Refresh();
  void ClearResults();
  void ApplyFont();
  void FollowSelection();
  void UpdatePreview();

  const WindowProgram program_;
  RunLog log_;
  PatternSlots patterns_;

  MainMenu menu_;
  StatusPanels panels_;
  const SidePair sides_;
  PaneSplitter* const splitter_;  // between the sides
  QSplitter* const results_splitter_;
  OutputFrame* const ChkFrame;
  QPushButton* const BtnRun;
  QPushButton* const BtnDirRun;
  QPushButton* const BtnListClear;
  QToolButton* const BtnWinMode;
  QPushButton* const BtnClose;
  ResultList* const OutList;

  SplitterBars bars_;
  WindowState state_;
  JobStarter jobs_;
  ListPopup popup_;
  FolderButtonMenu folder_buttons_;
  MainKeys keys_;

  int option_tab_ = 0;  // shown last, counted from 0
  bool loaded_ = false;
  bool forget_ = false;  // the settings were cleared: nothing is saved
};

}  // namespace ledrix
