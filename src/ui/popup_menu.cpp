#include "ui/popup_menu.h"

#include "ui/named.h"
#include "ui/qt_text.h"

namespace ledrix {

PopupMenu::PopupMenu(Commands commands, QWidget* parent)
    : QMenu(parent), commands_(std::move(commands)) {
  const Commands& on = commands_;
  MenuPopAPStart = Entry("MenuPopAPStart", "関連付けAPで開く(&O)", on.open);
  MenuPopMatchSelect = Entry("MenuPopMatchSelect", "対Dir同名ﾌｧｲﾙ選択(&S)", on.select_namesakes);
  Line();
  MenuPopSendTo = Named(addMenu("送る(&T)"), "MenuPopSendTo");
  Line();
  MenuPopStepCnt = Entry("MenuPopStepCnt", "ｽﾃｯﾌﾟｶｳﾝﾄ(&S)", on.count_steps);
  MenuPopDirClip = Entry("MenuPopDirClip", "一覧ﾃｷｽﾄ作成", on.copy_folder_list);
  MenuPopCompClip = Entry("MenuPopCompClip", "比較ﾃｷｽﾄ作成", on.copy_folder_compare);
  Line();
  MenuPopDirDatEdit =
      Entry("MenuPopDirDatEdit", "ﾃﾞｨﾚｸﾄﾘ情報作成(&M)", on.make_directory_information);
  MenuPopCurentADD = Entry("MenuPopCurentADD", "ｶﾚﾝﾄﾃﾞｨﾚｸﾄﾘﾃﾞｰﾀ追加(&A)", on.add_folder_to_history);
  Line();
  MenuPOPFileCopy = Entry("MenuPOPFileCopy", "逆ﾌｫﾙﾀﾞへﾌｧｲﾙｺﾋﾟｰ", on.copy_file);
  MenuPOPDeleteFile = Entry("MenuPOPDeleteFile", "ﾌｧｲﾙ削除", on.delete_file);
  Line();
  MenuPopDirExp = Entry("MenuPopDirExp", "ｴｸｽﾌﾟﾛｰﾗを開く(&O)", on.open_folder);
  Line();
  Entry("MenuPopRefresh", "最新の情報に更新(&R)", on.refresh);
  Entry("MenuPopListClear", "結果一覧ｸﾘｱ(&C)", on.clear_results);
  MenuPopView = Entry("MenuPopView", "表示(&V)", on.view);
}

QAction* PopupMenu::Entry(const char* name, const char* caption,
                          const std::function<void()>& command) {
  QAction* const action = Named(addAction(caption), name);
  connect(action, &QAction::triggered, this, [&command] { command(); });
  return action;
}

void PopupMenu::Line() {
  Named(addSeparator(), "POPMenuLine", ++lines_);
}

void PopupMenu::OfferLaunchers(const std::vector<Launcher>& launchers) {
  MenuPopSendTo->clear();
  int number = 0;
  for (const Launcher& launcher : launchers) {
    const QString caption = ToCaption(ToQString(NativePath(launcher.name)));
    QAction* const entry = Named(MenuPopSendTo->addAction(caption), "MenuPopSendAP", number++);
    connect(entry, &QAction::triggered, this, [this, launcher] { commands_.send_to(launcher); });
  }
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
  MenuPopView->setVisible(result);
  for (QAction* const action : {MenuPopAPStart, MenuPopMatchSelect, MenuPopSendTo->menuAction(),
                                MenuPopStepCnt, MenuPOPFileCopy, MenuPOPDeleteFile, MenuPopView}) {
    action->setEnabled(folder || look.has_selection);
  }
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
