#include "ui/history_window.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPushButton>
#include <QScreen>
#include <QTreeWidget>
#include <algorithm>

#include "settings/twips.h"
#include "ui/explain.h"
#include "ui/named.h"
#include "ui/qt_text.h"

namespace ledrix {
namespace {

constexpr QSize kHistoryDesignSize(520, 340);
constexpr const char* kWidthKey = "LViewWidth";
constexpr const char* kHeightKey = "LViewHeight";

QTreeWidgetItem* NewRow(const HistoryEntry& entry) {
  const QString folder = ToQString(entry.folder);
  auto* const row = new QTreeWidgetItem({folder, ToQString(entry.date_text)});
  row->setToolTip(0, folder);
  return row;
}

}  // namespace

LedrixFr::LedrixFr(RunLog& log, SettingsStore& store, Side active_side, OpenFolder open_folder,
                   QWidget* parent)
    : QDialog(parent),
      DirList(Named(new QTreeWidget(this), "DirList")),
      BtnDirOpen{Named(new QPushButton("Old Dir 展開", this), "BtnDirOpen", 0),
                 Named(new QPushButton("New Dir 展開", this), "BtnDirOpen", 1)},
      BtnClear(Named(new QPushButton("クリア", this), "BtnClear")),
      BtnClose(Named(new QPushButton("閉じる", this), "BtnClose")),
      log_(log),
      store_(store),
      active_side_(active_side),
      open_folder_(std::move(open_folder)) {
  Named(this, "LedrixFr");
  setWindowTitle("ｶﾚﾝﾄﾃﾞｨﾚｸﾄﾘの変更");
  SetUpList();
  LayOut();
  TakeStoredSize();
  Connect();
  Explain(*this);
}

void LedrixFr::SetUpList() {
  DirList->setHeaderLabels({"ﾃﾞｨﾚｸﾄﾘ名", "日時"});
  DirList->setRootIsDecorated(false);
  DirList->setUniformRowHeights(true);
  DirList->setAllColumnsShowFocus(true);
  DirList->setTextElideMode(Qt::ElideMiddle);
  QHeaderView* const header = DirList->header();
  header->setStretchLastSection(false);
  header->setSectionResizeMode(0, QHeaderView::Stretch);
  const int margins = 4 * DirList->fontMetrics().averageCharWidth();
  header->resizeSection(1,
                        DirList->fontMetrics().horizontalAdvance("0000/00/00 00:00:00") + margins);
  DirList->installEventFilter(this);
}

void LedrixFr::LayOut() {
  auto* const buttons = new QHBoxLayout;
  for (QPushButton* const button : BtnDirOpen) buttons->addWidget(button);
  buttons->addStretch();
  buttons->addWidget(BtnClear);
  buttons->addWidget(BtnClose);
  // The Enter key belongs to the list, so no button stands out as the one it presses.
  for (QPushButton* const button : {BtnDirOpen[0], BtnDirOpen[1], BtnClear, BtnClose}) {
    button->setAutoDefault(false);
  }
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(DirList);
  layout->addLayout(buttons);
}

void LedrixFr::TakeStoredSize() {
  const QSize design = kHistoryDesignSize.expandedTo(minimumSizeHint());
  setMinimumSize(design);
  const QSize stored(ReadPixels(store_, kWidthKey, design.width()),
                     ReadPixels(store_, kHeightKey, design.height()));
  resize(stored.boundedTo(screen()->availableSize()).expandedTo(design));
}

void LedrixFr::Connect() {
  connect(DirList, &QTreeWidget::itemDoubleClicked, this, [this] { OpenSelectedAndClose(); });
  for (const Side side : kBothSides) {
    connect(BtnDirOpen[IndexOf(side)], &QPushButton::clicked, this,
            [this, side] { OpenSelected(side); });
  }
  connect(BtnClear, &QPushButton::clicked, this, [this] { Clear(); });
  connect(BtnClose, &QPushButton::clicked, this, &QDialog::accept);
}

void LedrixFr::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (event->spontaneous()) return;  // back from the task bar with what was deleted
  LoadHistory();
  DirList->setFocus();
}

void LedrixFr::LoadHistory() {
  entries_ = log_.LoadHistory();
  QList<QTreeWidgetItem*> rows;
  rows.reserve(static_cast<qsizetype>(entries_.size()));
  for (const HistoryEntry& entry : entries_) rows.append(NewRow(entry));
  DirList->clear();
  DirList->addTopLevelItems(rows);
}

void LedrixFr::done(int result) {
  if (!isMinimized()) {
    WritePixels(store_, kWidthKey, width());
    WritePixels(store_, kHeightKey, height());
  }
  if (result == Accepted) log_.SaveHistory(entries_);
  QDialog::done(result);
}

bool LedrixFr::eventFilter(QObject* watched, QEvent* event) {
  if (watched == DirList && event->type() == QEvent::KeyPress) {
    switch (static_cast<QKeyEvent*>(event)->key()) {
      case Qt::Key_Return:
      case Qt::Key_Enter:
        OpenSelectedAndClose();
        return true;
      case Qt::Key_Delete:
        DeleteSelected();
        return true;
      default:
        break;
    }
  }
  return QDialog::eventFilter(watched, event);
}

void LedrixFr::keyPressEvent(QKeyEvent* event) {
  auto* const button = dynamic_cast<QPushButton*>(focusWidget());
  const bool is_enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (is_enter && button != nullptr) {
    button->click();
  } else {
    QDialog::keyPressEvent(event);
  }
}

int LedrixFr::SelectedRow() const {
  QTreeWidgetItem* const current = DirList->currentItem();
  if (current != nullptr && current->isSelected()) return DirList->indexOfTopLevelItem(current);
  const QList<QTreeWidgetItem*> selected = DirList->selectedItems();
  return selected.isEmpty() ? -1 : DirList->indexOfTopLevelItem(selected.front());
}

bool LedrixFr::OpenSelected(Side side) {
  const int row = SelectedRow();
  if (row < 0) return false;
  open_folder_(side, entries_[static_cast<size_t>(row)].folder);
  return true;
}

void LedrixFr::OpenSelectedAndClose() {
  if (OpenSelected(active_side_)) accept();
}

void LedrixFr::DeleteSelected() {
  const int row = SelectedRow();
  if (row < 0) return;
  entries_.erase(entries_.begin() + row);
  delete DirList->takeTopLevelItem(row);
  DirList->clearSelection();
  if (entries_.empty()) return;
  const int next = std::min(row, DirList->topLevelItemCount() - 1);
  DirList->setCurrentItem(DirList->topLevelItem(next));
}

void LedrixFr::Clear() {
  entries_.clear();
  DirList->clear();
  accept();
}

}  // namespace ledrix
