// The popup menu on the lists of the main window: what it was opened on, and what is done with it.
#pragma once

#include <functional>

#include "ui/file_commands.h"
#include "ui/popup_menu.h"
#include "ui/side_pair.h"
#include "ui/window_program.h"

namespace ledrix {

class JobStarter;
class ResultList;
class RunLog;

class ListPopup {
 public:
  // What concerns the whole window.
  struct Hooks {
    std::function<void()> refresh;
    std::function<void()> clear_results;
  };
  // `window` owns the menu; all must outlive this.
  ListPopup(QWidget& window, const WindowProgram& program, const SidePair& sides,
            ResultList& results, JobStarter& jobs, RunLog& log, Hooks hooks);

  // On a list of a side, at a place in global coordinates.
  void Show(PopupSource source, Side side, const QPoint& place);
  // A double click on a side's file list, or the Enter key.
  void ActivateFile(Side side);

  bool is_copying() const { return files_.is_copying(); }

 private:
  PopupMenu::Commands Commands();
  void ConnectResults();
  // The selected file of the list that the menu was opened on; empty when there is none.
  NativePath TargetFile() const;
  FileFrame& side() const { return sides_[side_]; }
  void SelectNamesakes();
  void SendTo(const Launcher& launcher);
  void CountSteps();
  void MakeDirectoryInformation();
  void CopyFolderList();
  void CopyFolderCompare();
  void AddFolderToHistory();
  void CopyToOtherSide();
  void DeleteFiles();
  void OpenFolder();
  // In a reader of our own.
  void View(const NativePath& file);
  // By the program that is associated with it, else in a reader.
  void OpenResult(const NativePath& file);

  const WindowProgram& program_;
  const SidePair sides_;
  ResultList& results_;
  JobStarter& jobs_;
  RunLog& log_;
  const Hooks hooks_;
  FileCommands files_;
  PopupMenu* const POPMenu;
  PopupSource source_ = PopupSource::kFileBox;
  Side side_ = Side::kOld;
};

}  // namespace ledrix
