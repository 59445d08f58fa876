#include "ui/main_menu.h"

#include <QMenuBar>

namespace ledrix {
namespace {

QAction* Entry(QMenu& menu, const char* name, const char* caption) {
  QAction* const action = menu.addAction(caption);
  action->setObjectName(name);
  return action;
}

QMenu* Submenu(QMenu& menu, const char* name, const char* caption) {
  QMenu* const submenu = menu.addMenu(caption);
  submenu->setObjectName(name);
  return submenu;
}

}  // namespace

MainMenu::MainMenu(QMenuBar& bar) {
  QMenu& operation = *bar.addMenu("操作(&M)");
  MenuTextCompStart = Entry(operation, "MenuTextCompStart", "ﾃｷｽﾄｺﾝﾍﾟｱ開始(&S)");
  MenuDirComp = Submenu(operation, "MenuDirComp", "ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱ開始(&D)");
  MenuDirCompFullPath = Entry(*MenuDirComp, "MenuDirCompFullPath", "フルパス(&F)");
  MenuDirCompCurentPath = Entry(*MenuDirComp, "MenuDirCompCurentPath", "カレントパス(&C)");
  MenuDirCompNoPath = Entry(*MenuDirComp, "MenuDirCompNoPath", "パスなし(&N)");
  MenuDirDatEdit = Entry(operation, "MenuDirDatEdit", "ﾃﾞｨﾚｸﾄﾘ情報作成(&E)");
  operation.addSeparator();
  MenuEnd = Entry(operation, "MenuEnd", "Ledrix の終了(&X)");

  QMenu& option = *bar.addMenu("ｵﾌﾟｼｮﾝ(&O)");
  MenuListClear = Entry(option, "MenuListClear", "結果一覧ｸﾘｱ(&C)");
  MenuMatchGrp = Submenu(option, "MenuMatchGrp", "一致条件(&M)");
  MenuPatternGrp = Submenu(option, "MenuPatternGrp", "条件ﾊﾟﾀｰﾝ(&P)");
  MenuCharsetGrp = Submenu(option, "MenuCharsetGrp", "文字ｺｰﾄﾞ");
  MenuRefresh = Entry(option, "MenuRefresh", "最新の情報に更新(&R)");
  option.addSeparator();
  MenuOption = Entry(option, "MenuOption", "ｵﾌﾟｼｮﾝ設定(&O)");

  QMenu& help = *bar.addMenu("ﾍﾙﾌﾟ(&H)");
  MenuHelpContents = Entry(help, "MenuHelpContents", "目次(&C)");
  menuReadme = Entry(help, "menuReadme", "Readme表示");
  help.addSeparator();
  MenuHelpVersion = Entry(help, "MenuHelpVersion", "ﾊﾞｰｼﾞｮﾝ情報(&A)");
  MenuRegClear = Entry(help, "MenuRegClear", "ｱﾝｲﾝｽﾄｰﾙ(ﾚｼﾞｽﾄﾘｸﾘｱ)");
}

}  // namespace ledrix
