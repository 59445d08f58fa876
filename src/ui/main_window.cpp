#include "ui/main_window.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QStatusBar>
#include <QVBoxLayout>
#include <algorithm>

#include "jobs/output_preview.h"
#include "run/job_record.h"
#include "ui/buttons.h"
#include "ui/explain.h"
#include "ui/named.h"
#include "ui/options_dialog.h"
#include "ui/output_frame.h"
#include "ui/pane_splitter.h"
#include "ui/program_commands.h"
#include "ui/qt_text.h"
#include "ui/result_list.h"
#include "ui/side_buttons.h"
#include "ui/version_window.h"
#include "ui/window_platform.h"

namespace ledrix {
namespace {

struct ModeLook {
  const char* symbol;
  const char* hint;
};
// By BarMode.
constexpr ModeLook kModes[] = {{"▽", "区切バー位置比率固定"},
                               {"⊿", "フォームリサイズ時に区切バー位置リセット"},
                               {"◇", "区切バー位置は常に可変"}};

BarMode ModeAfter(BarMode mode) {
  return static_cast<BarMode>((static_cast<int>(mode) + 1) % 3);
}

}  // namespace

LedrixF0::LedrixF0(const WindowProgram& program)
    : program_(program),
      log_(program.folder, program.platform),
      patterns_(program.folder),
      menu_(*menuBar(), *this, program.options, patterns_, program.platform,
            WritesEvidence(program.store), MenuCommands()),
      panels_(*Named(statusBar(), "sbStatusBar")),
      sides_(MakeSide(Side::kOld), MakeSide(Side::kNew)),
      splitter_(new PaneSplitter(&sides_[Side::kOld], MakeRightPane(), "imgSplitter1")),
      results_splitter_(new QSplitter(Qt::Vertical)),
      ChkFrame(Named(new OutputFrame(program.options, program.job.outputs, program.platform,
                                     [this] { FollowSelection(); }),
                     "ChkFrame")),
      BtnRun(Named(CaptionButton("ﾃｷｽﾄｺﾝﾍﾟｱ開始", "ﾃｷｽﾄｺﾝﾍﾟｱ開始"), "BtnRun")),
      BtnDirRun(Named(CaptionButton("ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱ開始", "ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱ開始(ｶﾚﾝﾄﾊﾟｽ)"), "BtnDirRun")),
      BtnListClear(Named(CaptionButton("Clear", "結果一覧クリア"), "BtnListClear")),
      BtnWinMode(Named(SymbolButton("", ""), "BtnWinMode")),
      BtnClose(Named(CaptionButton("終了", "Ledrix の終了"), "BtnClose")),
      OutList(Named(new ResultList, "OutList")),
      bars_(*splitter_, sides_, *results_splitter_),
      state_(*this, program_, sides_, bars_),
      jobs_(*this, program_, sides_, *OutList, log_,
            {[this] {
               panels_.HideTrouble();
               panels_.ShowPairs({});
             },
             [this](const PairTally& tally) { panels_.ShowPairs(ToQString(tally.Text())); },
             [this] { UpdatePreview(); }}),
      popup_(*this, program_, sides_, *OutList, jobs_, log_,
             {[this] { Refresh(); }, [this] { ClearResults(); }}),
      folder_buttons_(*this, program_, sides_, log_),
      keys_(*this, sides_, *OutList, [this] { ClearResults(); }) {
  Named(this, "LedrixF0");
  setWindowTitle("Ledrix");
  program_.job.GuiMode = true;
  LayOut();
  Explain(*this);
  new HelpKey(*this, [this] { ShowHelp(program_.actions, program_.platform); });
  Load();
  program_.platform.OnTrouble([this](const std::string& line) { panels_.ShowTrouble(line); });
}

LedrixF0::~LedrixF0() {
  program_.platform.OnTrouble(nullptr);
}

MainMenu::Commands LedrixF0::MenuCommands() {
  return {.compare_texts = [this] { jobs_.StartTextCompare(); },
          .compare_directories = [this](CompareRange range) { jobs_.StartDirCompare(range); },
          .make_directory_information =
              [this] { jobs_.StartDirEdit(Side::kOld, sides_[Side::kOld].folder()); },
          .write_evidence = [this](bool on) { SetWritesEvidence(program_.store, on); },
          .verify_evidence = [this] { jobs_.StartVerification(); },
          .end = [this] { close(); },
          .clear_results = [this] { ClearResults(); },
          .refresh = [this] { Refresh(); },
          .edit_options = [this] { EditOptions(); },
          .show_help = [this] { ShowHelp(program_.actions, program_.platform); },
          .show_readme = [this] { ShowReadme(program_.actions, program_.platform); },
          .show_version = [this] { ShowVersion(); },
          .clear_settings = [this] { ClearSettingsAndEnd(); },
          .conditions_changed = [this] { UpdatePreview(); }};
}

FileFrame* LedrixF0::MakeSide(Side side) {
  FileFrame::Hooks hooks;
  hooks.selection_changed = [this] { FollowSelection(); };
  hooks.folder_opens = [this] { panels_.HideRefusal(); };
  hooks.refused = [this](const std::string& line) { panels_.ShowRefusal(line); };
  hooks.folder_followed = [this, side](const NativePath& from, const NativePath& to, bool shift) {
    const bool follows = IsOn(program_.options.DirBoxSynchro) != shift;
    if (follows) sides_.FollowFolder(side, from, to);
  };
  hooks.file_popup = [this, side](const QPoint& place) {
    popup_.Show(PopupSource::kFileBox, side, place);
  };
  hooks.folder_popup = [this, side](const QPoint& place) {
    popup_.Show(PopupSource::kDirBox, side, place);
  };
  hooks.file_activated = [this, side] { popup_.ActivateFile(side); };
  hooks.folder_button_pressed = [this, side] { folder_buttons_.Press(side); };
  hooks.folder_button_released = [this] { folder_buttons_.Release(); };
  hooks.folder_button_clicked = [this, side] { folder_buttons_.Click(side); };
  hooks.bar_moved = [this] { bars_.NoteMoved(); };
  return Named(new FileFrame(side, program_.options, program_.platform, std::move(hooks)),
               "FileFrame", IndexOf(side));
}

QWidget* LedrixF0::MakeRightPane() {
  auto* const pane = new QWidget;
  auto* const row = new QHBoxLayout(pane);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(new SideButtons(sides_));
  row->addWidget(&sides_[Side::kNew], 1);
  return pane;
}

QWidget* LedrixF0::MakeButtonRow() {
  connect(BtnRun, &QPushButton::clicked, this, [this] { jobs_.StartTextCompare(); });
  connect(BtnDirRun, &QPushButton::clicked, this,
          [this] { jobs_.StartDirCompare(CompareRange::kCurrentPath); });
  connect(BtnListClear, &QPushButton::clicked, this, [this] { ClearResults(); });
  connect(BtnWinMode, &QToolButton::clicked, this, [this] { SetBarMode(ModeAfter(bars_.mode())); });
  connect(BtnClose, &QPushButton::clicked, this, [this] { close(); });
  for (const ModeLook& look : kModes) {  // with any of its symbols it is as wide
    BtnWinMode->setText(look.symbol);
    BtnWinMode->setMinimumWidth(
        std::max(BtnWinMode->minimumWidth(), BtnWinMode->sizeHint().width()));
  }
  auto* const bar = new QWidget;
  auto* const row = new QHBoxLayout(bar);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(ChkFrame, 1);
  for (QPushButton* const button : {BtnRun, BtnDirRun}) {
    const QSize size = button->sizeHint();
    button->setMinimumSize(size.width() + fontMetrics().height(), size.height() * 3 / 2);
    row->addWidget(button);
  }
  row->addSpacerItem(new QSpacerItem(12, 0, QSizePolicy::Maximum));
  row->addWidget(BtnListClear);
  row->addWidget(BtnWinMode);
  row->addWidget(BtnClose);
  return bar;
}

void LedrixF0::LayOut() {
  menuBar()->setNativeMenuBar(false);
  results_splitter_->setChildrenCollapsible(false);
  const auto add_pane = [this](const std::vector<QWidget*>& widgets, int stretch) {
    auto* const pane = new QWidget;
    auto* const rows = new QVBoxLayout(pane);
    rows->setContentsMargins(0, 0, 0, 0);
    for (QWidget* const widget : widgets) rows->addWidget(widget);
    results_splitter_->addWidget(pane);
    results_splitter_->setStretchFactor(results_splitter_->count() - 1, stretch);
  };
  add_pane({splitter_}, 3);
  add_pane({MakeButtonRow(), OutList}, 1);
  Named(results_splitter_->handle(1), "imgSplitter3");
  auto* const center = new QWidget;
  (new QVBoxLayout(center))->addWidget(results_splitter_);
  setCentralWidget(center);
}

void LedrixF0::Load() {
  state_.Load();
  ApplyFont();
  ChkFrame->ChooseAtStart();
  state_.LoadSides();
  SetBarMode(bars_.mode());
  UpdatePreview();
  loaded_ = true;
  for (size_t n = 0; n < kPatternSlots; ++n) {
    if (const Status unread = patterns_.LoadPattern(n); !unread.ok()) {
      program_.platform.ReportTrouble(PathToUtf8(patterns_.FileOf(n)) + ": " +
                                      DescribeError(unread.error()));
    }
  }
  menu_.FillConditions();
}

void LedrixF0::SetBarMode(BarMode mode) {
  const ModeLook& look = kModes[static_cast<size_t>(mode)];
  BtnWinMode->setText(look.symbol);
  BtnWinMode->setToolTip(TipBelow(look.hint, *this, "BtnWinMode"));
  bars_.SetMode(mode);
}

void LedrixF0::EditOptions() {
  LedrixFo(program_.options, patterns_, program_.platform, option_tab_, this).exec();
  ApplyFont();
  ChkFrame->FollowOptions();
  for (FileFrame* const frame : sides_) frame->RenewFilters();
  menu_.FollowOptions();
}

void LedrixF0::ShowVersion() {
  LedrixFv(LedrixFv::Use::kOnDemand, program_.actions, this).exec();
}

void LedrixF0::ClearSettingsAndEnd() {
  if (!ClearSettings(program_.store, program_.platform)) return;
  forget_ = true;
  close();
}

void LedrixF0::Refresh() {
  panels_.HideTrouble();
  sides_.Refresh();
}

void LedrixF0::ClearResults() {
  OutList->Clear();
  program_.job.RunCounter = 0;
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

// Until the user does something no other folder than the program's own is offered for the outputs.
void LedrixF0::FollowSelection() {
  if (loaded_) {
    FollowOutputSide(program_.job.outputs,
                     {sides_[Side::kOld].Brief(), sides_[Side::kNew].Brief()});
  }
  UpdatePreview();
}

void LedrixF0::UpdatePreview() {
  for (const Side side : kBothSides) {
    panels_.ShowCount(side, sides_[side].selected_count(), sides_[side].file_count());
  }
  const FileSides brief = {sides_[Side::kOld].Brief(), sides_[Side::kNew].Brief()};
  panels_.ShowPreview(ToQString(OutputPreview(program_.options, program_.job.outputs, brief)));
}

void LedrixF0::OpenOnSide(Side side, const NativePath& path) {
  sides_[side].OpenDropped(path);
}

void LedrixF0::closeEvent(QCloseEvent* event) {
  // What runs below this call still uses the window.
  if (jobs_.is_running() || popup_.is_copying()) {
    event->ignore();
    return;
  }
  if (!forget_) {
    state_.Save();
    log_.CompactHistory();
  }
  event->accept();
}

void LedrixF0::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  bars_.LayOut();
}

void LedrixF0::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  bars_.LayOut();
}

}  // namespace ledrix
