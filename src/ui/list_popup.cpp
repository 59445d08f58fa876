#include "ui/list_popup.h"

#include "dircomp/dir_compare.h"
#include "jobs/run_log.h"
#include "platform/program_folder.h"
#include "settings/option_record.h"
#include "ui/desktop_actions.h"
#include "ui/job_starter.h"
#include "ui/later.h"
#include "ui/listing_window.h"
#include "ui/named.h"
#include "ui/qt_text.h"
#include "ui/result_list.h"
#include "ui/wait_cursor.h"
#include "ui/window_platform.h"

namespace ledrix {
namespace {

// Without the separator at its end, as people write a folder.
NativePath Shown(const NativePath& folder) {
  return folder.bytes() == "/" ? folder : StripBackslash(folder);
}

}  // namespace

ListPopup::ListPopup(QWidget& window, const WindowProgram& program, const SidePair& sides,
                     ResultList& results, JobStarter& jobs, RunLog& log, Hooks hooks)
    : program_(program),
      sides_(sides),
      results_(results),
      jobs_(jobs),
      log_(log),
      hooks_(std::move(hooks)),
      files_(program.platform, program.actions),
      POPMenu(Named(new PopupMenu(Commands(), &window), "POPMenu")) {
  ConnectResults();
  // A folder is highlighted for the menu only.
  QObject::connect(POPMenu, &QMenu::aboutToHide, POPMenu, [this] {
    DoLater(*POPMenu, [this] {
      for (FileFrame* const frame : sides_) frame->HighlightOpenFolder();
    });
  });
}

PopupMenu::Commands ListPopup::Commands() {
  return {.open = [this] { files_.Open(TargetFile()); },
          .select_namesakes = [this] { SelectNamesakes(); },
          .send_to = [this](const Launcher& launcher) { SendTo(launcher); },
          .count_steps = [this] { CountSteps(); },
          .copy_folder_list = [this] { CopyFolderList(); },
          .copy_folder_compare = [this] { CopyFolderCompare(); },
          .make_directory_information = [this] { MakeDirectoryInformation(); },
          .add_folder_to_history = [this] { AddFolderToHistory(); },
          .copy_file = [this] { CopyToOtherSide(); },
          .delete_file = [this] { DeleteFiles(); },
          .open_folder = [this] { OpenFolder(); },
          .refresh = hooks_.refresh,
          .clear_results = hooks_.clear_results,
          .view = [this] { View(TargetFile()); }};
}

void ListPopup::ConnectResults() {
  results_.setContextMenuPolicy(Qt::CustomContextMenu);
  QObject::connect(
      &results_, &QWidget::customContextMenuRequested, &results_, [this](const QPoint& place) {
        Show(PopupSource::kListBox, Side::kOld, results_.viewport()->mapToGlobal(place));
      });
  QObject::connect(&results_, &QListView::doubleClicked, &results_,
                   [this] { OpenResult(results_.SelectedOutput()); });
}

void ListPopup::Show(PopupSource source, Side side, const QPoint& place) {
  source_ = source;
  side_ = side;
  const OptionRecord& options = program_.options;
  if (source != PopupSource::kDirBox) {
    const bool own = IsOn(options.SendToLDX);
    POPMenu->OfferLaunchers(
        ListLaunchers(SendToFolder(own ? SendToOwner::kProgram : SendToOwner::kUser)));
  }
  POPMenu->Prepare(source, {.delete_hidden = IsOn(options.DELMenuVisible),
                            .double_click_selects = IsOn(options.OptDbClick),
                            .has_selection = !TargetFile().empty()});
  POPMenu->popup(place);
}

void ListPopup::ActivateFile(Side side) {
  source_ = PopupSource::kFileBox;
  side_ = side;
  if (IsOn(program_.options.OptDbClick)) {
    SelectNamesakes();
  } else {
    files_.Open(TargetFile());
  }
}

void ListPopup::SelectNamesakes() {
  if (side().selected_count() > 0) sides_.SelectNamesakesOf(side_);
}

NativePath ListPopup::TargetFile() const {
  if (source_ == PopupSource::kListBox) return results_.SelectedOutput();
  const std::string name = side().SelectedName();
  return name.empty() ? NativePath() : side().folder() + name;
}

void ListPopup::SendTo(const Launcher& launcher) {
  const NativePath file = TargetFile();
  if (!file.empty()) program_.actions.StartLauncher(launcher, file);
}

void ListPopup::CountSteps() {
  if (source_ == PopupSource::kDirBox) {
    jobs_.StartStepCsv(side_);
  } else {
    jobs_.StartStepCount(side_);
  }
}

void ListPopup::MakeDirectoryInformation() {
  const NativePath folder = side().HighlightedFolder();
  if (PathExists(folder)) jobs_.StartDirEdit(side_, folder);
}

void ListPopup::CopyFolderList() {
  const WaitCursor wait;
  program_.actions.SetClipboardText(
      ToQString(modDComp::FolderListText(side().HighlightedFolder())));
}

void ListPopup::CopyFolderCompare() {
  const WaitCursor wait;
  program_.actions.SetClipboardText(
      ToQString(modDComp::FolderCompareText(Shown(sides_[Side::kOld].HighlightedFolder()),
                                            Shown(sides_[Side::kNew].HighlightedFolder()))));
}

void ListPopup::AddFolderToHistory() {
  const NativePath folder = side().HighlightedFolder();
  if (!IsFolder(folder)) return;
  log_.WriteRunRecord(folder);
  log_.CompactHistory();
}

void ListPopup::CopyToOtherSide() {
  FileFrame& other = sides_[OtherSide(side_)];
  std::vector<FileCommands::CopyPaths> files;
  for (const std::string& name : side().SelectedNames()) {
    files.push_back({side().folder() + name, other.folder() + name});
  }
  if (!files.empty() && files_.Copy(files)) other.Refresh();
}

void ListPopup::DeleteFiles() {
  if (source_ == PopupSource::kListBox) {
    if (files_.Delete(results_.SelectedOutputs())) sides_.Refresh();
    return;
  }
  const std::vector<std::string> names = side().SelectedNames();
  std::vector<NativePath> paths;
  paths.reserve(names.size());
  for (const std::string& name : names) paths.push_back(side().folder() + name);
  if (files_.Delete(std::move(paths))) side().ForgetGone(names);
}

void ListPopup::View(const NativePath& file) {
  if (file.empty() || !GetFileInfo(file).ok()) return;
  ListingWindow::Open({program_.platform, program_.actions, program_.store}, file);
}

void ListPopup::OpenResult(const NativePath& file) {
  files_.Open(file, [this, &file] { View(file); });
}

void ListPopup::OpenFolder() {
  const NativePath folder = side().HighlightedFolder();
  if (IsFolder(folder)) program_.actions.OpenFolder(folder);
}

}  // namespace ledrix
