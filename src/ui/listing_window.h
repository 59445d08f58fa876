// The reader: a listing, or any text, in a window of its own.
#pragma once

#include <QMainWindow>
#include <QPageLayout>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>

#include "listing/viewed_file.h"
#include "platform/native_path.h"
#include "ui/listing_search.h"
#include "ui/listing_view.h"

class QLabel;

namespace ledrix {

class DesktopActions;
class FindBar;
class ListingMap;
class PlatformServices;
class SettingsStore;

// Deletes itself when it is closed.
class ListingWindow : public QMainWindow {
 public:
  // What a reader needs of the program; all must outlive it. Zoom and colours are kept in `store`,
  // which its owner saves.
  struct Program {
    PlatformServices& platform;
    DesktopActions& actions;
    SettingsStore& store;
  };

  // Opens a window on a file. A file that cannot be shown is told in a message; null then.
  static ListingWindow* Open(const Program& program, const NativePath& path);

  int64_t current_line() const { return view_->current(); }

 protected:
  void changeEvent(QEvent* event) override;

 private:
  class StatusLabel;

  ListingWindow(const Program& program, NativePath path, ViewedFile file);
  void MakeLayout();
  void MakeMenus();
  void MakeFileMenu();
  void MakeEditMenu();
  void MakeViewMenu();
  void Add(QMenu* menu, const char* name, const char* caption, const QKeySequence& key,
           std::function<void()> command);

  void ReadOn();
  void FollowFile();
  void ShowState();
  QString StateText() const;
  QString CountsText() const;

  void GoToBlock(bool forward);
  void AskForPlace();
  void OpenFind();
  void CloseFind();
  void SearchAnew();
  void ShowFound();

  void CopyRows();
  void CopySide(Side side);
  bool IsTooMuchToCopy();
  void OpenSide(Side side);
  void Zoom(int steps);
  void SetScheme(int scheme);
  int PaperChoice() const;  // of the menu's entries, from 0
  QPageLayout PaperLayout() const;
  void PrintOnPaper();
  void SavePdf();
  bool ReadAll();

  const Program program_;
  const NativePath path_;
  std::unique_ptr<ViewedFile> file_;
  bool is_gone_ = false;  // the file is no longer at its path
  ListingView* view_;
  ListingMap* map_;
  FindBar* find_;
  QLabel* block_text_;
  StatusLabel* counts_text_;
  StatusLabel* options_text_;
  QTimer reading_;
  QTimer following_;
  ListingSearch search_;
};

}  // namespace ledrix
