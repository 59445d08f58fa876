// The main window's menu bar.
#pragma once

#include <QAction>
#include <QMenu>

class QMenuBar;

namespace ledrix {

// Every entry, named as its object is. The menu bar owns them.
struct MainMenu {
  // Fills the bar.
  explicit MainMenu(QMenuBar& bar);

  QAction* MenuTextCompStart;
  QMenu* MenuDirComp;
  QAction* MenuDirCompFullPath;
  QAction* MenuDirCompCurentPath;
  QAction* MenuDirCompNoPath;
  QAction* MenuDirDatEdit;
  QAction* MenuEnd;

  QAction* MenuListClear;
  QMenu* MenuMatchGrp;
  QMenu* MenuPatternGrp;
  QMenu* MenuCharsetGrp;
  QAction* MenuRefresh;
  QAction* MenuOption;

  QAction* MenuHelpContents;
  QAction* menuReadme;
  QAction* MenuHelpVersion;
  QAction* MenuRegClear;
};

}  // namespace ledrix
