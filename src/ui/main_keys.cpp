#include "ui/main_keys.h"

#include <QApplication>
#include <QKeyEvent>
#include <QShortcut>
#include <algorithm>
#include <utility>
#include <vector>

#include "ui/result_list.h"

namespace ledrix {

MainKeys::MainKeys(QWidget& window, const SidePair& sides, ResultList& results,
                   const std::function<void()>& clear_results)
    : window_(window), sides_(sides), results_(results) {
  const auto add = [&window](QKeyCombination key, const std::function<void()>& act) {
    QObject::connect(new QShortcut(key, &window), &QShortcut::activated, &window, act);
  };
  add(Qt::CTRL | Qt::Key_L, [this] { FocusedSide().FocusPath(); });
  add(Qt::Key_F6, [this] { GoRound(1); });
  add(Qt::SHIFT | Qt::Key_F6, [this] { GoRound(-1); });
  add(Qt::ALT | Qt::Key_Left, [this] { sides_.SelectNamesakesOf(Side::kNew); });
  add(Qt::ALT | Qt::Key_Right, [this] { sides_.SelectNamesakesOf(Side::kOld); });
  add(Qt::CTRL | Qt::Key_S, [this] { sides_.SwapFolders(); });
  add(Qt::Key_F8, [this] { results_.GoToFailure(true); });
  add(Qt::SHIFT | Qt::Key_F8, [this] { results_.GoToFailure(false); });
  auto* const clear = new QShortcut(Qt::Key_Delete, &results);
  clear->setContext(Qt::WidgetShortcut);
  QObject::connect(clear, &QShortcut::activated, &results, clear_results);
}

FileFrame& MainKeys::FocusedSide() const {
  FileFrame& new_side = sides_[Side::kNew];
  return new_side.isAncestorOf(window_.focusWidget()) ? new_side : sides_[Side::kOld];
}

void MainKeys::GoRound(int step) {
  std::vector<QWidget*> panes;
  for (const FileFrame* const side : sides_) {
    for (QWidget* const pane : side->Panes()) panes.push_back(pane);
  }
  panes.push_back(&results_);
  const auto count = static_cast<int>(panes.size());
  const auto focused = std::find(panes.begin(), panes.end(), window_.focusWidget());
  // From elsewhere it goes to the first pane, or back to the last.
  const int from =
      focused != panes.end() ? static_cast<int>(focused - panes.begin()) : (step > 0 ? -1 : count);
  panes[static_cast<size_t>((from + step + count) % count)]->setFocus(Qt::ShortcutFocusReason);
}

HelpKey::HelpKey(QWidget& window, std::function<void()> help)
    : QObject(&window), help_(std::move(help)) {
  qApp->installEventFilter(this);
}

bool HelpKey::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent*>(event)->key() != Qt::Key_F1 ||
      !watched->isWidgetType() || QApplication::activeModalWidget() == nullptr) {
    return false;
  }
  if (!std::exchange(is_helping_, true)) {
    help_();
    is_helping_ = false;
  }
  return true;
}

}  // namespace ledrix
