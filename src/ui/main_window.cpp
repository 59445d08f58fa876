#include "ui/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QSplitter>
#include <QStatusBar>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include "ui/file_frame.h"
#include "ui/later.h"
#include "ui/output_frame.h"
#include "ui/program_commands.h"
#include "ui/qt_text.h"
#include "ui/result_list.h"

namespace ledrix {
namespace {

constexpr int kHoldMilliseconds = 900;

QToolButton* SymbolButton(const QString& name, const char* symbol, const char* hint) {
  auto* const button = new QToolButton;
  button->setObjectName(name);
  button->setText(symbol);
  button->setToolTip(hint);
  button->setAutoRaise(false);
  return button;
}

QPushButton* CaptionButton(const char* name, const char* caption, const char* hint) {
  auto* const button = new QPushButton(caption);
  button->setObjectName(name);
  button->setToolTip(hint);
  button->setAutoDefault(false);
  return button;
}

// A text that is cut off rather than making the window wider.
QLabel* Panel(const char* name) {
  auto* const label = new QLabel;
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  return label;
}

}  // namespace

LedrixF0::LedrixF0(const WindowProgram& program)
    : program_(program),
      log_(program.folder, program.platform),
      patterns_(program.folder),
      chooser_(program.folder),
      menu_(*menuBar()),
      match_menu_(*menu_.MenuMatchGrp, program.options),
      pattern_menu_(*menu_.MenuPatternGrp, program.options, patterns_,
                    [this] { match_menu_.Synchronise(); }),
      charset_menu_(*menu_.MenuCharsetGrp, program.options, program.platform, this) {
  program_.job.GuiMode = true;
  Build();
  ConnectMenu();
  ConnectPopup();
  LoadState();
  program_.platform.OnTrouble([this](const std::string& line) { ShowTrouble(line); });
}

LedrixF0::~LedrixF0() {
  program_.platform.OnTrouble(nullptr);
}

void LedrixF0::Build() {
  setObjectName("LedrixF0");
  setWindowTitle("Ledrix");
  menuBar()->setNativeMenuBar(false);
  POPMenu = new PopupMenu(this);
  POP_ChangeDir = new QMenu(this);
  POP_ChangeDir->setObjectName("POP_ChangeDir");
  Timer1 = new QTimer(this);
  Timer1->setObjectName("Timer1");
  Timer1->setSingleShot(true);
  Timer1->setInterval(kHoldMilliseconds);
  for (int index = 0; index < 2; ++index) {
    FileFrame::Hooks hooks;
    hooks.selection_changed = [this] { UpdatePreview(); };
    hooks.folder_followed = [this, index](const NativePath& from, const NativePath& to,
                                          bool shift) { FollowFolder(index, from, to, shift); };
    hooks.file_popup = [this, index](const QPoint& place) {
      ShowPopup(PopupSource::kFileBox, index, place);
    };
    hooks.folder_popup = [this, index](const QPoint& place) {
      ShowPopup(PopupSource::kDirBox, index, place);
    };
    hooks.file_activated = [this, index] { ActivateFile(index); };
    hooks.refresh_wanted = [this] { Refresh(); };
    sides_[static_cast<size_t>(index)] =
        new FileFrame(index, program_.options, program_.platform, std::move(hooks));
  }
  auto* const right = new QWidget;
  auto* const right_row = new QHBoxLayout(right);
  right_row->setContentsMargins(0, 0, 0, 0);
  right_row->addWidget(BuildMiddle());
  right_row->addWidget(sides_[1], 1);
  splitter_ = new QSplitter(Qt::Horizontal);
  splitter_->setOpaqueResize(false);
  splitter_->setChildrenCollapsible(false);
  splitter_->addWidget(sides_[0]);
  splitter_->addWidget(right);
  splitter_->setStretchFactor(0, 0);
  splitter_->setStretchFactor(1, 1);

  OutList = new ResultList;
  OutList->setContextMenuPolicy(Qt::CustomContextMenu);
  auto* const rows = new QVBoxLayout;
  rows->addWidget(splitter_, 3);
  rows->addWidget(BuildButtonRow());
  rows->addWidget(OutList, 1);
  auto* const center = new QWidget;
  center->setLayout(rows);
  setCentralWidget(center);
  BuildStatusBar();
}

QWidget* LedrixF0::BuildMiddle() {
  BtnEQ[0] = SymbolButton("BtnEQ0", "⇔", "OldDirとNewDirを入れ替えます");
  BtnEQ[1] = SymbolButton("BtnEQ1", "⇒", "NewﾃﾞｨﾚｸﾄﾘをOldと同じにします");
  BtnEQ[2] = SymbolButton("BtnEQ2", "⇐", "OldﾃﾞｨﾚｸﾄﾘをNewと同じにします");
  BtnEQSel[0] = SymbolButton("BtnEQSel0", "←", "New 選択分から一致する Old を選択");
  BtnEQSel[1] = SymbolButton("BtnEQSel1", "→", "Old 選択分から一致する New を選択");
  BtnEQSel[2] = SymbolButton("BtnEQSel2", "＝", "一致全て選択");
  connect(BtnEQ[0], &QToolButton::clicked, this, [this] { SwapFolders(); });
  connect(BtnEQ[1], &QToolButton::clicked, this, [this] { AlignFolders(1, 0); });
  connect(BtnEQ[2], &QToolButton::clicked, this, [this] { AlignFolders(0, 1); });
  connect(BtnEQSel[0], &QToolButton::clicked, this, [this] { SelectNamesakesOf(1); });
  connect(BtnEQSel[1], &QToolButton::clicked, this, [this] { SelectNamesakesOf(0); });
  connect(BtnEQSel[2], &QToolButton::clicked, this, [this] { SelectAllMatching(); });
  auto* const strip = new QWidget;
  auto* const rows = new QVBoxLayout(strip);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->addStretch(2);
  for (QToolButton* const button : BtnEQ) rows->addWidget(button);
  rows->addSpacing(fontMetrics().height());
  for (QToolButton* const button : BtnEQSel) rows->addWidget(button);
  rows->addStretch(3);
  return strip;
}

QWidget* LedrixF0::BuildButtonRow() {
  ChkFrame = new OutputFrame(program_.options, program_.job.outputs, program_.platform,
                             [this] { UpdatePreview(); });
  BtnRun = CaptionButton("BtnRun", "ﾃｷｽﾄｺﾝﾍﾟｱ開始", "ﾃｷｽﾄｺﾝﾍﾟｱ開始");
  BtnDirRun = CaptionButton("BtnDirRun", "ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱ開始", "ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱ開始(ｶﾚﾝﾄﾊﾟｽ)");
  BtnListClear = CaptionButton("BtnListClear", "Clear", "結果一覧クリア");
  BtnClose = CaptionButton("BtnClose", "終了", "Ledrix の終了");
  BtnWinMode = SymbolButton("BtnWinMode", "", "");
  connect(BtnRun, &QPushButton::clicked, this, [this] { StartTextCompare(); });
  connect(BtnDirRun, &QPushButton::clicked, this,
          [this] { StartDirCompare(CompareRange::kCurrentPath); });
  connect(BtnListClear, &QPushButton::clicked, this, [this] { ClearResults(); });
  connect(BtnClose, &QPushButton::clicked, this, [this] { close(); });
  connect(BtnWinMode, &QToolButton::clicked, this, [this] { SetMode((RisizeMode + 1) % 3); });
  auto* const bar = new QWidget;
  auto* const row = new QHBoxLayout(bar);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(ChkFrame, 1);
  for (QPushButton* const button : {BtnRun, BtnDirRun}) {
    const QSize size = button->sizeHint();
    button->setMinimumSize(size.width() + fontMetrics().height(), size.height() * 3 / 2);
    row->addWidget(button);
  }
  row->addSpacing(12);
  row->addWidget(BtnListClear);
  row->addWidget(BtnWinMode);
  row->addWidget(BtnClose);
  return bar;
}

void LedrixF0::BuildStatusBar() {
  statusBar()->setObjectName("sbStatusBar");
  const char* const names[] = {"PanelOld", "PanelNew", "PanelPreview"};
  for (size_t i = 0; i < panels_.size(); ++i) {
    panels_[i] = Panel(names[i]);
    statusBar()->addWidget(panels_[i], i == 2 ? 1 : 0);
  }
  trouble_ = Panel("PanelTrouble");
  trouble_->hide();
  statusBar()->addWidget(trouble_, 1);
  for (QLabel* const label : {panels_[2], trouble_}) {
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  }
}

// Beside the preview, until the next job or refresh.
void LedrixF0::ShowTrouble(const std::string& line) {
  trouble_->setText("⚠ " + ToQString(line));
  trouble_->setToolTip(ToQString(line));
  trouble_->show();
}

void LedrixF0::ConnectMenu() {
  const auto on = [this](QAction* action, auto command) {
    connect(action, &QAction::triggered, this, command);
  };
  on(menu_.MenuTextCompStart, [this] { StartTextCompare(); });
  on(menu_.MenuDirCompFullPath, [this] { StartDirCompare(CompareRange::kFullPath); });
  on(menu_.MenuDirCompCurentPath, [this] { StartDirCompare(CompareRange::kCurrentPath); });
  on(menu_.MenuDirCompNoPath, [this] { StartDirCompare(CompareRange::kNoPath); });
  on(menu_.MenuDirDatEdit, [this] { StartDirEdit(0, side(0).folder()); });
  on(menu_.MenuEnd, [this] { close(); });
  on(menu_.MenuListClear, [this] { ClearResults(); });
  on(menu_.MenuRefresh, [this] { Refresh(); });
  on(menu_.MenuOption, [this] { EditOptions(); });
  on(menu_.MenuHelpContents, [this] { ShowHelp(program_.actions, program_.platform); });
  on(menu_.menuReadme, [this] { ShowReadme(program_.actions, program_.platform); });
  on(menu_.MenuHelpVersion, [this] { ShowVersion(); });
  on(menu_.MenuRegClear, [this] { ClearSettingsAndEnd(); });
}

void LedrixF0::ConnectPopup() {
  const auto on = [this](QAction* action, auto command) {
    connect(action, &QAction::triggered, this, command);
  };
  on(POPMenu->MenuPopAPStart, [this] { OpenPopupFile(); });
  on(POPMenu->MenuPopMatchSelect, [this] { SelectNamesakesOf(popup_side_); });
  on(POPMenu->MenuPopStepCnt,
     [this] { popup_source_ == PopupSource::kDirBox ? StartStepCsv() : StartStepCount(); });
  on(POPMenu->MenuPopDirClip, [this] { CopyFolderList(); });
  on(POPMenu->MenuPopCompClip, [this] { CopyFolderCompare(); });
  on(POPMenu->MenuPopDirDatEdit, [this] {
    const NativePath folder = side(popup_side_).HighlightedFolder();
    if (PathExists(folder)) StartDirEdit(popup_side_, folder);
  });
  on(POPMenu->MenuPopCurentADD, [this] { AddFolderToHistory(); });
  on(POPMenu->MenuPOPFileCopy, [this] { CopyToOtherSide(); });
  on(POPMenu->MenuPOPDeleteFile, [this] { DeletePopupFile(); });
  on(POPMenu->MenuPopDirExp, [this] { OpenFolderInFileManager(); });
  on(POPMenu->MenuPopRefresh, [this] { Refresh(); });
  on(POPMenu->MenuPopListClear, [this] { ClearResults(); });
  connect(OutList, &QWidget::customContextMenuRequested, this, [this](const QPoint& place) {
    ShowPopup(PopupSource::kListBox, 0, OutList->viewport()->mapToGlobal(place));
  });
  const char* const folders[] = {"My Documents", "Ledrix Dir"};
  for (int i = 0; i < 2; ++i) {
    QAction* const entry = POP_ChangeDir->addAction(folders[i]);
    entry->setObjectName("MenuPopCDir" + QString::number(i));
    on(entry, [this, i] {
      side(popup_side_).OpenFolder(i == 0 ? program_.actions.DocumentsFolder() : program_.folder);
    });
  }
  // A folder is highlighted for the menu only.
  connect(POPMenu, &QMenu::aboutToHide, this, [this] {
    DoLater(*this, [this] {
      for (FileFrame* const frame : sides_) frame->HighlightOpenFolder();
    });
  });
  connect(Timer1, &QTimer::timeout, this, [this] { ShowFolderMenu(); });
  for (int index = 0; index < 2; ++index) {
    QToolButton& button = side(index).folder_button();
    connect(&button, &QToolButton::pressed, this, [this, index] { PressFolderButton(index); });
    connect(&button, &QToolButton::released, this, [this, index] { ReleaseFolderButton(index); });
  }
  connect(OutList, &QListView::doubleClicked, this, [this] { Open(OutList->CurrentOutput()); });
}

void LedrixF0::LoadState() {
  const SettingsStore& store = program_.store;
  RestoreGeometry();
  LoadOptions(store, program_.options);
  const char* const folder_keys[] = {"EndPathOld", "EndPathNew"};
  const char* const filter_keys[] = {"ComboIdx0", "ComboIdx1"};
  for (int index = 0; index < 2; ++index) {
    const NativePath folder =
        program_.options.EndPath == 1
            ? NativePath(store.ReadSetting("Option", folder_keys[index], program_.folder.bytes()))
            : MakeAbsolute(NativePath("."));
    const std::string filter = store.ReadSetting("Option", filter_keys[index], "0");
    side(index).SetFilters(ToQString(filter).toInt());
    side(index).OpenFolder(MakeAbsolute(AddBackslash(folder)));
  }
  SetMode(RisizeMode);
  ChkFrame->ChooseAtStart();
  UpdatePreview();
  match_menu_.Synchronise();
  ApplyFont();
  for (size_t n = 0; n < kPatternSlots; ++n) patterns_.LoadPattern(n);
  pattern_menu_.Rebuild();
  charset_menu_.BuildCharsetMenu();
}

void LedrixF0::SaveState() {
  SettingsStore& store = program_.store;
  if (!isMinimized() && !isMaximized() && !isFullScreen()) StoreGeometry();
  for (int index = 0; index < 2; ++index) {
    store.WriteSetting("Option", index == 0 ? "ComboIdx0" : "ComboIdx1",
                       std::to_string(side(index).filter_index()));
  }
  const QStringList version = QString(LEDRIX_VERSION).split('.');
  const char* const keys[] = {"Major", "Minor", "Revision"};
  for (int i = 0; i < 3; ++i) {
    store.WriteSetting("Settings", keys[i], ToUtf8(version.value(i).rightJustified(2, '0')));
  }
  store.WriteSetting("Settings", "VerDisp", std::to_string(program_.options.VerDisp));
  SaveOptions(program_.options, {side(0).folder().bytes(), side(1).folder().bytes()}, store);
  if (const Status failed = store.Save(); !failed.ok()) {
    program_.platform.ReportTrouble("設定を保存できません: " + DescribeError(failed.error()));
  }
  log_.CompactHistory();
}

void LedrixF0::OpenOnSide(int index, const NativePath& path) {
  side(index).OpenDropped(path);
}

void LedrixF0::closeEvent(QCloseEvent* event) {
  // A job that runs below this call still uses the window.
  if (busy_) {
    event->ignore();
    return;
  }
  if (!forget_) SaveState();
  event->accept();
}

}  // namespace ledrix
