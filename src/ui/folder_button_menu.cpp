#include "ui/folder_button_menu.h"

#include <QMenu>
#include <QTimer>

#include "ui/desktop_actions.h"
#include "ui/history_window.h"
#include "ui/later.h"
#include "ui/named.h"

namespace ledrix {
namespace {

constexpr int kHoldMilliseconds = 900;

}  // namespace

FolderButtonMenu::FolderButtonMenu(QWidget& window, const WindowProgram& program,
                                   const SidePair& sides, RunLog& log)
    : window_(window),
      program_(program),
      sides_(sides),
      log_(log),
      POP_ChangeDir(Named(new QMenu(&window), "POP_ChangeDir")),
      Timer1(Named(new QTimer(&window), "Timer1")) {
  Timer1->setSingleShot(true);
  Timer1->setInterval(kHoldMilliseconds);
  QObject::connect(Timer1, &QTimer::timeout, &window, [this] { ShowMenu(); });
  AddFolder(0, "My Documents", [this] { return program_.actions.DocumentsFolder(); });
  AddFolder(1, "Ledrix Dir", [this] { return program_.folder; });
}

void FolderButtonMenu::AddFolder(int index, const char* caption,
                                 std::function<NativePath()> folder) {
  const QAction* const entry = Named(POP_ChangeDir->addAction(caption), "MenuPopCDir", index);
  QObject::connect(entry, &QAction::triggered, &window_,
                   [this, folder = std::move(folder)] { sides_[side_].OpenFolder(folder()); });
}

void FolderButtonMenu::Press(Side side) {
  side_ = side;
  Timer1->start();
}

void FolderButtonMenu::Release() {
  was_brief_ = Timer1->isActive();
  Timer1->stop();
}

void FolderButtonMenu::Click(Side side) {
  if (!was_brief_) return;  // it was held, and the menu is there
  // When the button is done with its click.
  DoLater(window_, [this, side] { ShowHistory(side); });
}

void FolderButtonMenu::ShowMenu() {
  sides_[side_].ShowBelowFolderButton(*POP_ChangeDir);
}

void FolderButtonMenu::ShowHistory(Side side) {
  const auto open = [this](Side to_side, const NativePath& folder) {
    sides_[to_side].OpenFolder(folder);
  };
  LedrixFr(log_, program_.store, side, open, &window_).exec();
}

}  // namespace ledrix
