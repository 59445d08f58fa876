#include "ui/file_frame.h"

#include <QApplication>
#include <QComboBox>
#include <QDropEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QSplitter>
#include <QToolButton>
#include <QTreeView>
#include <QUrl>
#include <QVBoxLayout>

#include "ui/folder_list.h"
#include "ui/qt_text.h"
#include "ui/roomy_rows.h"

namespace ledrix {
namespace {

// The first local path of what is dragged; empty when it is no list of files.
NativePath FirstPath(const QMimeData& data) {
  for (const QUrl& url : data.urls()) {
    if (!url.isLocalFile()) continue;
    const QByteArray bytes = QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toUtf8());
    return NativePath(bytes.toStdString());
  }
  return {};
}

}  // namespace

FileFrame::FileFrame(int side, const OptionRecord& options, PlatformServices& platform, Hooks hooks,
                     QWidget* parent)
    : QGroupBox(side == 0 ? "Old File " : "New File ", parent),
      side_(side),
      options_(options),
      platform_(platform),
      hooks_(std::move(hooks)) {
  Build();
  Connect();
  AcceptDrops();
  FillDrives();
}

FileFrame::~FileFrame() = default;

void FileFrame::Build() {
  const auto named = [this](QWidget* widget, const char* name) {
    widget->setObjectName(QString(name) + QString::number(side_));
  };
  named(this, "FileFrame");
  named(inTextFile = new QLineEdit, "inTextFile");
  named(BtnDirOpen = new QToolButton, "BtnDirOpen");
  BtnDirOpen->setToolTip("ｶﾚﾝﾄﾃﾞｨﾚｸﾄﾘの変更");
  BtnDirOpen->setIcon(style()->standardIcon(QStyle::SP_DirOpenIcon));
  named(inDrive = new QComboBox, "inDrive");
  named(inDirBox = new FolderList, "inDirBox");
  named(inCombo = new QComboBox, "inCombo");
  named(inListView = new QTreeView, "inListView");
  for (QComboBox* const box : {inDrive, inCombo}) {
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(6);
  }
  splitter_ = new QSplitter(Qt::Horizontal);
  splitter_->setOpaqueResize(false);
  splitter_->setChildrenCollapsible(false);
  splitter_->addWidget(BuildFolderPane());
  splitter_->addWidget(BuildFilePane());
  splitter_->setStretchFactor(0, 0);
  splitter_->setStretchFactor(1, 1);

  auto* const path_row = new QHBoxLayout;
  path_row->addWidget(inTextFile, 1);
  path_row->addWidget(BtnDirOpen);
  auto* const rows = new QVBoxLayout(this);
  rows->addLayout(path_row);
  rows->addWidget(splitter_, 1);
}

QWidget* FileFrame::BuildFolderPane() {
  auto* const pane = new QWidget;
  auto* const rows = new QVBoxLayout(pane);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->addWidget(inDrive);
  rows->addWidget(inDirBox, 1);
  return pane;
}

QWidget* FileFrame::BuildFilePane() {
  inListView->setModel(&table_);
  inListView->setItemDelegate(new RoomyRows(inListView));
  inListView->setRootIsDecorated(false);
  inListView->setUniformRowHeights(true);
  inListView->setItemsExpandable(false);
  inListView->setAllColumnsShowFocus(true);
  inListView->setSelectionMode(QAbstractItemView::ExtendedSelection);
  inListView->setSelectionBehavior(QAbstractItemView::SelectRows);
  inListView->setEditTriggers(QAbstractItemView::NoEditTriggers);
  inListView->header()->setSectionsClickable(true);
  inListView->header()->setStretchLastSection(false);
  inListView->header()->setSortIndicatorShown(false);
  auto* const pane = new QWidget;
  auto* const rows = new QVBoxLayout(pane);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->addWidget(inCombo);
  rows->addWidget(inListView, 1);
  return pane;
}

void FileFrame::Connect() {
  inDirBox->OpensOnSingleClick([this] { return options_.DirBoxSClick == 1; });
  inDirBox->OnOpen([this](const NativePath& folder, bool shift) {
    const NativePath from = folder_;
    OpenFolder(folder);
    hooks_.folder_followed(from, folder_, shift);
  });
  connect(inDrive, &QComboBox::activated, this, [this](int index) { ChooseDrive(index); });
  connect(inCombo, &QComboBox::activated, this, [this] { FillFiles(ReadOpenFolder()); });
  connect(inTextFile, &QLineEdit::returnPressed, this, [this] {
    const NativePath path = MakeAbsolute(ToNativePath(inTextFile->text().trimmed()));
    if (const Result<FileInfo> info = GetFileInfo(path); info.ok()) {
      OpenDropped(path);
    } else {
      platform_.ReportTrouble(PathToUtf8(path) + ": " + DescribeError(info.error()));
    }
    UpdatePathText();
  });
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
  for (QAbstractItemView* const view :
       {static_cast<QAbstractItemView*>(inDirBox), static_cast<QAbstractItemView*>(inListView)}) {
    const auto& popup = view == inDirBox ? hooks_.folder_popup : hooks_.file_popup;
    view->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(view, &QWidget::customContextMenuRequested, this,
            [view, &popup](const QPoint& at) { popup(view->viewport()->mapToGlobal(at)); });
  }
  inListView->installEventFilter(this);
}

void FileFrame::AcceptDrops() {
  QList<QWidget*> targets = {this, inDrive, inTextFile};
  for (QAbstractItemView* const view :
       {static_cast<QAbstractItemView*>(inDirBox), static_cast<QAbstractItemView*>(inListView)}) {
    targets << view << view->viewport();
  }
  targets << inCombo;
  for (QWidget* const target : targets) {
    target->setAcceptDrops(true);
    if (target != inListView) target->installEventFilter(this);
  }
}

bool FileFrame::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove: {
      auto* const drag = static_cast<QDropEvent*>(event);
      if (FirstPath(*drag->mimeData()).empty()) {
        drag->ignore();
      } else {
        drag->setDropAction(Qt::CopyAction);
        drag->accept();
      }
      return true;
    }
    case QEvent::Drop: {
      auto* const drop = static_cast<QDropEvent*>(event);
      const NativePath path = FirstPath(*drop->mimeData());
      if (path.empty()) return true;
      drop->setDropAction(Qt::CopyAction);
      drop->accept();
      OpenDropped(path);
      return true;
    }
    case QEvent::KeyPress: {
      auto* const key = static_cast<QKeyEvent*>(event);
      if (watched != inListView) break;
      if (HandleKey(key->key(), key->modifiers().testFlag(Qt::ControlModifier))) return true;
      break;
    }
    default:
      break;
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
    case Qt::Key_R:
      hooks_.refresh_wanted();
      return true;
    default:
      return false;
  }
}

}  // namespace ledrix
