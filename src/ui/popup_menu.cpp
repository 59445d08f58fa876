#include "ui/popup_menu.h"

namespace ledrix {

PopupMenu::PopupMenu(QWidget* parent) : QMenu(parent) {
  setObjectName("POPMenu");
  MenuPopAPStart = Entry("MenuPopAPStart", "関連付けAPで開く(&O)");
  MenuPopMatchSelect = Entry("MenuPopMatchSelect", "対Dir同名ﾌｧｲﾙ選択(&S)");
  Line();
  MenuPopSendTo = addMenu("送る(&T)");
  MenuPopSendTo->setObjectName("MenuPopSendTo");
  Line();
  MenuPopStepCnt = Entry("MenuPopStepCnt", "ｽﾃｯﾌﾟｶｳﾝﾄ(&S)");
  MenuPopDirClip = Entry("MenuPopDirClip", "一覧ﾃｷｽﾄ作成");
  MenuPopCompClip = Entry("MenuPopCompClip", "比較ﾃｷｽﾄ作成");
  Line();
  MenuPopDirDatEdit = Entry("MenuPopDirDatEdit", "ﾃﾞｨﾚｸﾄﾘ情報作成(&M)");
  MenuPopCurentADD = Entry("MenuPopCurentADD", "ｶﾚﾝﾄﾃﾞｨﾚｸﾄﾘﾃﾞｰﾀ追加(&A)");
  Line();
  MenuPOPFileCopy = Entry("MenuPOPFileCopy", "逆ﾌｫﾙﾀﾞへﾌｧｲﾙｺﾋﾟｰ");
  MenuPOPDeleteFile = Entry("MenuPOPDeleteFile", "ﾌｧｲﾙ削除");
  Line();
  MenuPopDirExp = Entry("MenuPopDirExp", "ｴｸｽﾌﾟﾛｰﾗを開く(&O)");
  Line();
  MenuPopRefresh = Entry("MenuPopRefresh", "最新の情報に更新(&R)");
  MenuPopListClear = Entry("MenuPopListClear", "結果一覧ｸﾘｱ(&C)");
}

QAction* PopupMenu::Entry(const char* name, const char* caption) {
  QAction* const action = addAction(caption);
  action->setObjectName(name);
  return action;
}

void PopupMenu::Line() {
  QAction* const line = addSeparator();
  POPMenuLine.at(lines_++) = line;
  line->setObjectName("POPMenuLine" + QString::number(lines_));
}

void PopupMenu::Prepare(PopupSource source, const Look& look) {
  const bool file = source == PopupSource::kFileBox;
  const bool folder = source == PopupSource::kDirBox;
  const bool result = source == PopupSource::kListBox;
  MenuPopAPStart->setVisible(file || result);
  MenuPopMatchSelect->setVisible(file);
  const bool sendable = (file || result) && !MenuPopSendTo->isEmpty();
  MenuPopSendTo->menuAction()->setVisible(sendable);
  MenuPopStepCnt->setVisible(file || folder);
  MenuPopStepCnt->setText(folder ? "ｽﾃｯﾌﾟｶｳﾝﾄ(CSV)(&S)" : "ｽﾃｯﾌﾟｶｳﾝﾄ(&S)");
  MenuPopDirClip->setVisible(file || folder);
  MenuPopCompClip->setVisible(file || folder);
  MenuPopDirDatEdit->setVisible(folder);
  MenuPopCurentADD->setVisible(folder);
  MenuPOPFileCopy->setVisible(file);
  MenuPOPDeleteFile->setVisible((file && !look.delete_hidden) || result);
  MenuPopDirExp->setVisible(folder);
  const bool selects = file && look.double_click_selects;
  setDefaultAction(folder ? nullptr : selects ? MenuPopMatchSelect : MenuPopAPStart);
  ShowLines();
}

// A line stands where the group below it is shown.
void PopupMenu::ShowLines() {
  QAction* line = nullptr;
  bool shown = false;
  for (QAction* const action : actions()) {
    if (!action->isSeparator()) {
      shown = shown || action->isVisible();
      continue;
    }
    if (line != nullptr) line->setVisible(shown);
    line = action;
    shown = false;
  }
  if (line != nullptr) line->setVisible(shown);
}

}  // namespace ledrix
