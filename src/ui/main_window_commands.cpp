// The main window's commands that start no job.
#include <QApplication>
#include <QFontInfo>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>

#include "desktop/launcher.h"
#include "dircomp/dir_compare.h"
#include "jobs/folder_sync.h"
#include "jobs/output_preview.h"
#include "platform/file_copy.h"
#include "platform/program_folder.h"
#include "ui/desktop_actions.h"
#include "ui/file_frame.h"
#include "ui/history_window.h"
#include "ui/later.h"
#include "ui/main_window.h"
#include "ui/options_dialog.h"
#include "ui/output_frame.h"
#include "ui/program_commands.h"
#include "ui/qt_text.h"
#include "ui/result_list.h"
#include "ui/version_window.h"

namespace ledrix {
namespace {

// The hourglass, while it lives.
class WaitCursor {
 public:
  WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
  ~WaitCursor() { QApplication::restoreOverrideCursor(); }
  WaitCursor(const WaitCursor&) = delete;
  WaitCursor& operator=(const WaitCursor&) = delete;
};

bool IsSameFolder(const NativePath& a, const NativePath& b) {
  return FoldedName(a.bytes()) == FoldedName(b.bytes());
}

// Without the separator at its end, as people write a folder.
NativePath Shown(const NativePath& folder) {
  return folder.bytes() == "/" ? folder : StripBackslash(folder);
}

}  // namespace

void LedrixF0::AlignFolders(int to_side, int from_side) {
  const NativePath folder = side(from_side).folder();
  if (!IsSameFolder(folder, side(to_side).folder())) side(to_side).OpenFolder(folder);
}

void LedrixF0::SwapFolders() {
  const NativePath old_folder = side(0).folder();
  const NativePath new_folder = side(1).folder();
  if (IsSameFolder(old_folder, new_folder)) return;
  side(0).OpenFolder(new_folder);
  side(1).OpenFolder(old_folder);
}

void LedrixF0::SelectNamesakesOf(int from) {
  if (side(from).selected_count() == 0) return;
  const WaitCursor wait;
  FileSide other = side(1 - from).Snapshot();
  SelectNamesakes(side(from).Snapshot().files, other.files);
  side(1 - from).Select(other.files);
}

void LedrixF0::SelectAllMatching() {
  const WaitCursor wait;
  FileSides sides = Sides();
  SelectAllNamesakes(sides);
  for (int index = 0; index < 2; ++index) {
    side(index).Select(sides[static_cast<size_t>(index)].files);
  }
}

void LedrixF0::FollowFolder(int index, const NativePath& from, const NativePath& to, bool shift) {
  const bool follows = (program_.options.DirBoxSynchro == 1) != shift;
  if (!follows) return;
  const auto other = CorrespondingFolder(from, to, side(1 - index).folder());
  if (other && IsFolder(*other)) side(1 - index).OpenFolder(*other);
}

void LedrixF0::Refresh() {
  trouble_->hide();
  for (FileFrame* const frame : sides_) frame->Refresh();
}

void LedrixF0::ClearResults() {
  OutList->Clear();
  program_.job.RunCounter = 0;
}

void LedrixF0::ShowVersion() {
  LedrixFv(LedrixFv::Use::kOnDemand, program_.actions, this).exec();
}

void LedrixF0::EditOptions() {
  LedrixFo(program_.options, patterns_, program_.platform, option_tab_, this).exec();
  ApplyFont();
  ChkFrame->FollowOptions();
  for (FileFrame* const frame : sides_) frame->RenewFilters();
  match_menu_.Synchronise();
  pattern_menu_.Rebuild();
}

void LedrixF0::PressFolderButton(int index) {
  popup_side_ = index;
  Timer1->start();
}

void LedrixF0::ReleaseFolderButton(int index) {
  if (!Timer1->isActive()) return;  // it was held, and the menu is there
  Timer1->stop();
  // When the button is done with its click.
  DoLater(*this, [this, index] { ShowHistory(index); });
}

void LedrixF0::ShowFolderMenu() {
  QToolButton& button = side(popup_side_).folder_button();
  button.setDown(false);
  POP_ChangeDir->popup(button.mapToGlobal(QPoint(0, button.height())));
}

void LedrixF0::ShowHistory(int index) {
  active_side_ = index;
  const auto open = [this](int to_side, const NativePath& folder) {
    side(to_side).OpenFolder(folder);
  };
  LedrixFr(log_, program_.store, index, open, this).exec();
}

void LedrixF0::FillSendTo() {
  QMenu& menu = *POPMenu->MenuPopSendTo;
  menu.clear();
  const bool own = program_.options.SendToLDX == 1;
  int number = 0;
  for (const Launcher& launcher :
       ListLaunchers(SendToFolder(own ? SendToOwner::kProgram : SendToOwner::kUser))) {
    QAction* const entry = menu.addAction(ToCaption(ToQString(NativePath(launcher.name))));
    entry->setObjectName("MenuPopSendAP" + QString::number(number++));
    connect(entry, &QAction::triggered, this, [this, launcher] {
      const NativePath file = PopupFile();
      if (!file.empty()) program_.actions.StartLauncher(launcher, file);
    });
  }
}

void LedrixF0::ClearSettingsAndEnd() {
  if (!ClearSettings(program_.store, program_.platform)) return;
  forget_ = true;
  close();
}

void LedrixF0::ApplyFont() {
  QFont font(ToQString(program_.options.FontName));
  // Outside these sizes nothing could be read any more, the way to other ones included.
  constexpr int16_t kSmallest = 4;
  constexpr int16_t kLargest = 200;
  const int16_t size = program_.options.FontSize;
  font.setPointSize(size < kSmallest ? OptionRecord().FontSize : std::min(size, kLargest));
  for (FileFrame* const frame : sides_) frame->SetListFont(font);
  OutList->setFont(font);
}

void LedrixF0::UpdatePreview() {
  if (OutList == nullptr || sides_[1] == nullptr) return;
  const char* const names[] = {"Old", "New"};
  for (size_t i = 0; i < 2; ++i) {
    panels_[i]->setText(QString(" %1 %2/%3 ")
                            .arg(names[i])
                            .arg(sides_[i]->selected_count())
                            .arg(sides_[i]->file_count()));
  }
  const FileSides sides = {side(0).Brief(), side(1).Brief()};
  FollowOutputSide(program_.job.outputs, sides);
  const QString preview = ToQString(OutputPreview(program_.options, program_.job.outputs, sides));
  panels_[2]->setText(preview);
  panels_[2]->setToolTip(preview.trimmed());
}

void LedrixF0::ShowPopup(PopupSource source, int index, const QPoint& place) {
  popup_source_ = source;
  popup_side_ = index;
  active_side_ = index;
  if (source != PopupSource::kDirBox) FillSendTo();
  POPMenu->Prepare(source,
                   {program_.options.DELMenuVisible == 1, program_.options.OptDbClick == 1});
  POPMenu->popup(place);
}

void LedrixF0::ActivateFile(int index) {
  if (program_.options.OptDbClick == 1) {
    SelectNamesakesOf(index);
  } else {
    popup_source_ = PopupSource::kFileBox;
    popup_side_ = index;
    OpenPopupFile();
  }
}

NativePath LedrixF0::PopupFile() const {
  if (popup_source_ == PopupSource::kListBox) return OutList->CurrentOutput();
  const std::string name = side(popup_side_).CurrentName();
  return name.empty() ? NativePath() : side(popup_side_).folder() + name;
}

void LedrixF0::OpenPopupFile() {
  Open(PopupFile());
}

void LedrixF0::Open(const NativePath& path) {
  if (path.empty() || !GetFileInfo(path).ok()) return;
  if (program_.actions.OpenFile(path) != DesktopActions::OpenResult::kNoAssociation) return;
  program_.platform.ShowMessage({"ｱﾌﾟﾘｹｰｼｮﾝが関連付けされていません\r\n 拡張子( " +
                                 PathToUtf8(NativePath(ExtensionOf(path))) + " )"});
}

void LedrixF0::CopyToOtherSide() {
  const std::string name = side(popup_side_).CurrentName();
  if (name.empty()) return;
  FileFrame& other = side(1 - popup_side_);
  const NativePath from = side(popup_side_).folder() + name;
  const NativePath to = other.folder() + name;
  if (GetFileInfo(to).ok()) {
    const MessageAnswer answer = program_.platform.ShowMessage(
        {PathToUtf8(to) + "\r\nは既に存在します。上書きしますか？", kProgramTitle,
         MessageIcon::kQuestion, MessageButtons::kYesNo, MessageAnswer::kNo});
    if (answer != MessageAnswer::kYes) return;
  }
  busy_ = true;
  program_.platform.AcceptInput(false);
  Status failed;
  {
    const WaitCursor wait;
    failed = CopyFile(from, to, [this] { program_.platform.YieldToUi(); });
  }
  program_.platform.AcceptInput(true);
  busy_ = false;
  if (!failed.ok()) {
    program_.platform.ShowMessage(
        {"コピーできません: " + DescribeError(failed.error()) + "\r\n" + PathToUtf8(to)});
  }
  other.Refresh();
}

void LedrixF0::DeletePopupFile() {
  const NativePath path = PopupFile();
  if (path.empty() || !GetFileInfo(path).ok()) return;
  const MessageAnswer answer = program_.platform.ShowMessage(
      {PathToUtf8(path) + "\r\nをごみ箱に移動しますか？", kProgramTitle, MessageIcon::kQuestion,
       MessageButtons::kYesNo, MessageAnswer::kYes});
  if (answer != MessageAnswer::kYes) return;
  if (!program_.actions.MoveToTrash(path)) {
    program_.platform.ShowMessage({"ごみ箱に移動できません\r\n" + PathToUtf8(path)});
  }
  if (popup_source_ == PopupSource::kFileBox) side(popup_side_).ForgetIfGone(FileNameOf(path));
}

void LedrixF0::OpenFolderInFileManager() {
  const NativePath& folder = side(popup_side_).folder();
  if (IsFolder(folder)) program_.actions.OpenFolder(folder);
}

void LedrixF0::AddFolderToHistory() {
  const NativePath folder = side(active_side_).HighlightedFolder();
  if (!IsFolder(folder)) return;
  log_.WriteRunRecord(folder);
  log_.CompactHistory();
}

void LedrixF0::CopyFolderList() {
  const WaitCursor wait;
  program_.actions.SetClipboardText(
      ToQString(modDComp::FolderListText(side(popup_side_).HighlightedFolder())));
}

void LedrixF0::CopyFolderCompare() {
  const WaitCursor wait;
  program_.actions.SetClipboardText(ToQString(modDComp::FolderCompareText(
      Shown(side(0).HighlightedFolder()), Shown(side(1).HighlightedFolder()))));
}

}  // namespace ledrix
