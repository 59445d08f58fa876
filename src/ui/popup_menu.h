// The popup menu of the file lists, the folder lists and the result list.
#pragma once

#include <QMenu>
#include <array>

namespace ledrix {

// What a popup menu was opened on.
enum class PopupSource { kFileBox, kDirBox, kListBox };

class PopupMenu : public QMenu {
 public:
  explicit PopupMenu(QWidget* parent = nullptr);

  // How the options change the menu.
  struct Look {
    bool delete_hidden = false;         // in a file list
    bool double_click_selects = false;  // which entry of a file list is the default
  };
  // Shows the entries of a source and hides the others.
  void Prepare(PopupSource source, const Look& look);

  QAction* MenuPopAPStart;
  QAction* MenuPopMatchSelect;
  QMenu* MenuPopSendTo;  // its entries are made anew each time
  QAction* MenuPopStepCnt;
  QAction* MenuPopDirClip;
  QAction* MenuPopCompClip;
  QAction* MenuPopDirDatEdit;
  QAction* MenuPopCurentADD;
  QAction* MenuPOPFileCopy;
  QAction* MenuPOPDeleteFile;
  QAction* MenuPopDirExp;
  QAction* MenuPopRefresh;
  QAction* MenuPopListClear;

 private:
  QAction* Entry(const char* name, const char* caption);
  void Line();
  void ShowLines();

  std::array<QAction*, 6> POPMenuLine{};
  size_t lines_ = 0;
};

}  // namespace ledrix
