// The popup menu of the file lists, the folder lists and the result list.
#pragma once

#include <QMenu>
#include <functional>
#include <vector>

#include "desktop/launcher.h"

namespace ledrix {

// What a popup menu was opened on.
enum class PopupSource { kFileBox, kDirBox, kListBox };

class PopupMenu : public QMenu {
 public:
  // What the entries do; each is called from the event handler of its entry.
  struct Commands {
    std::function<void()> open;
    std::function<void()> select_namesakes;
    std::function<void(const Launcher&)> send_to;
    std::function<void()> count_steps;
    std::function<void()> copy_folder_list;
    std::function<void()> copy_folder_compare;
    std::function<void()> make_directory_information;
    std::function<void()> add_folder_to_history;
    std::function<void()> copy_file;
    std::function<void()> delete_file;
    std::function<void()> open_folder;
    std::function<void()> refresh;
    std::function<void()> clear_results;
    std::function<void()> view;
  };
  explicit PopupMenu(Commands commands, QWidget* parent = nullptr);

  // How the options change the menu.
  struct Look {
    bool delete_hidden = false;         // in a file list
    bool double_click_selects = false;  // which entry of a file list is the default
    bool has_selection = false;         // in the list that the menu is for
  };
  // Shows the entries of a source and hides the others. What acts on selected entries is disabled
  // without one.
  void Prepare(PopupSource source, const Look& look);
  // Makes the entries for sending anew.
  void OfferLaunchers(const std::vector<Launcher>& launchers);

 private:
  QAction* Entry(const char* name, const char* caption, const std::function<void()>& command);
  void Line();
  void ShowLines();

  const Commands commands_;
  int lines_ = 0;
  QAction* MenuPopAPStart;
  QAction* MenuPopMatchSelect;
  QMenu* MenuPopSendTo;
  QAction* MenuPopStepCnt;
  QAction* MenuPopDirClip;
  QAction* MenuPopCompClip;
  QAction* MenuPopDirDatEdit;
  QAction* MenuPopCurentADD;
  QAction* MenuPOPFileCopy;
  QAction* MenuPOPDeleteFile;
  QAction* MenuPopDirExp;
  QAction* MenuPopView;
};

}  // namespace ledrix
