#include "ui/file_frame.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/drive_box.h"
#include "ui/file_view.h"
#include "ui/folder_list.h"
#include "ui/named.h"
#include "ui/pane_splitter.h"
#include "ui/path_drops.h"
#include "ui/qt_text.h"

namespace ledrix {
namespace {

// A box that may be narrower than its entries. A layout keeps the least width that it finds first.
void LetBeNarrow(QComboBox& box) {
  box.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  box.setMinimumContentsLength(6);
}

}  // namespace

FileFrame::FileFrame(Side side, const OptionRecord& options, PlatformServices& platform,
                     Hooks hooks, QWidget* parent)
    : QGroupBox(side == Side::kOld ? "Old File " : "New File ", parent),
      side_(side),
      options_(options),
      hooks_(std::move(hooks)),
      inTextFile(Named(new QLineEdit, "inTextFile", IndexOf(side))),
      BtnDirOpen(Named(new QToolButton, "BtnDirOpen", IndexOf(side))),
      inDrive(Named(new DriveBox(platform, [this](const NativePath& drive) { OpenFolder(drive); }),
                    "inDrive", IndexOf(side))),
      inDirBox(Named(new FolderList, "inDirBox", IndexOf(side))),
      inCombo(Named(new QComboBox, "inCombo", IndexOf(side))),
      inListView(Named(new FileView(table_), "inListView", IndexOf(side))),
      splitter_(new PaneSplitter(BuildFolderPane(), BuildFilePane(),
                                 side == Side::kOld ? "imgSplitter0" : "imgSplitter2")) {
  LayOut();
  Connect();
  ConnectFileList();
  AcceptDrops();
  inDrive->Fill();
}

FileFrame::~FileFrame() = default;

void FileFrame::LayOut() {
  BtnDirOpen->setToolTip("ｶﾚﾝﾄﾃﾞｨﾚｸﾄﾘの変更");
  BtnDirOpen->setIcon(style()->standardIcon(QStyle::SP_DirOpenIcon));
  auto* const path_row = new QHBoxLayout;
  path_row->addWidget(inTextFile, 1);
  path_row->addWidget(BtnDirOpen);
  auto* const rows = new QVBoxLayout(this);
  rows->addLayout(path_row);
  rows->addWidget(splitter_, 1);
}

QWidget* FileFrame::BuildFolderPane() {
  LetBeNarrow(*inDrive);
  auto* const pane = new QWidget;
  auto* const rows = new QVBoxLayout(pane);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->addWidget(inDrive);
  rows->addWidget(inDirBox, 1);
  return pane;
}

QWidget* FileFrame::BuildFilePane() {
  LetBeNarrow(*inCombo);
  auto* const pane = new QWidget;
  auto* const rows = new QVBoxLayout(pane);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->addWidget(inCombo);
  rows->addWidget(inListView, 1);
  return pane;
}

void FileFrame::Connect() {
  inDirBox->OpensOnSingleClick([this] { return IsOn(options_.DirBoxSClick); });
  inDirBox->OnOpen([this](const NativePath& folder, bool shift) {
    const NativePath from = folder_;
    OpenFolder(folder);
    hooks_.folder_followed(from, folder_, shift);
  });
  connect(inCombo, &QComboBox::activated, this, [this] { FillFiles(ReadOpenFolder()); });
  connect(inTextFile, &QLineEdit::returnPressed, this, [this] { OpenTypedPath(); });
  connect(BtnDirOpen, &QToolButton::pressed, this, [this] { hooks_.folder_button_pressed(); });
  connect(BtnDirOpen, &QToolButton::released, this, [this] { hooks_.folder_button_released(); });
  connect(BtnDirOpen, &QToolButton::clicked, this, [this] { hooks_.folder_button_clicked(); });
  connect(splitter_, &QSplitter::splitterMoved, this, [this] { hooks_.bar_moved(); });
  for (QAbstractItemView* const view :
       {static_cast<QAbstractItemView*>(inDirBox), static_cast<QAbstractItemView*>(inListView)}) {
    const auto& popup = view == inDirBox ? hooks_.folder_popup : hooks_.file_popup;
    view->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(view, &QWidget::customContextMenuRequested, this,
            [view, &popup](const QPoint& at) { popup(view->viewport()->mapToGlobal(at)); });
  }
}

void FileFrame::ConnectFileList() {
  connect(inListView->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
    if (!quiet_) UpdatePathText();
  });
  connect(inListView, &QTreeView::doubleClicked, this, [this] { hooks_.file_activated(); });
  connect(inListView->header(), &QHeaderView::sectionClicked, this, [this](int column) {
    const bool down = sort_column_ == column && sort_order_ == Qt::AscendingOrder;
    sort_column_ = column;
    sort_order_ = down ? Qt::DescendingOrder : Qt::AscendingOrder;
    // The header has an idea of its own of what a click does to the mark.
    inListView->header()->setSortIndicatorShown(true);
    inListView->header()->setSortIndicator(sort_column_, sort_order_);
    table_.sort(sort_column_, sort_order_);
  });
  inListView->installEventFilter(this);
}

void FileFrame::AcceptDrops() {
  auto* const drops = new PathDrops([this](const NativePath& path) { OpenDropped(path); }, this);
  drops->Accept({this, inDrive, inTextFile, inDirBox, inDirBox->viewport(), inListView,
                 inListView->viewport(), inCombo});
}

bool FileFrame::eventFilter(QObject* watched, QEvent* event) {
  if (watched == inListView && event->type() == QEvent::KeyPress) {
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (HandleKey(key.key(), key.modifiers().testFlag(Qt::ControlModifier))) return true;
  }
  return QGroupBox::eventFilter(watched, event);
}

bool FileFrame::HandleKey(int key, bool control) {
  if (key == Qt::Key_Space) UpdatePathText();
  if (key == Qt::Key_Return || key == Qt::Key_Enter) {
    hooks_.file_activated();
    return true;
  }
  if (!control) return false;
  switch (key) {
    case Qt::Key_A:
      inListView->selectAll();
      return true;
    case Qt::Key_I:
      InvertSelection();
      return true;
    default:
      return false;
  }
}

void FileFrame::SetListFont(const QFont& font) {
  inDirBox->setFont(font);
  inListView->setFont(font);
}

void FileFrame::FocusPath() {
  inTextFile->setFocus(Qt::ShortcutFocusReason);
  inTextFile->selectAll();
}

std::array<QWidget*, 2> FileFrame::Panes() const {
  return {inDirBox, inListView};
}

void FileFrame::ShowBelowFolderButton(QMenu& menu) {
  BtnDirOpen->setDown(false);
  menu.popup(BtnDirOpen->mapToGlobal(QPoint(0, BtnDirOpen->height())));
}

int FileFrame::column_width(int column) const {
  return inListView->header()->sectionSize(column);
}

int FileFrame::date_width() const {
  return inListView->DateWidth();
}

void FileFrame::SetColumnWidth(int column, int width) {
  QHeaderView& header = *inListView->header();
  header.resizeSection(column, std::max(width, header.minimumSectionSize()));
}

int FileFrame::bar() const {
  return splitter_->first_width();
}

void FileFrame::MoveBar(int place) {
  layout()->activate();
  splitter_->SetFirstWidth(place);
}

void FileFrame::LetBarMove(bool movable) {
  splitter_->LetBarMove(movable);
}

}  // namespace ledrix
