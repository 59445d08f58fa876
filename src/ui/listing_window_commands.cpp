// The menus of the reader and what their entries do.
#include <QAction>
#include <QActionGroup>
#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QStatusBar>
#include <algorithm>
#include <iterator>

#include "platform/output_guard.h"
#include "platform/services.h"
#include "settings/settings_store.h"
#include "text/code_page_932.h"
#include "text/leading_number.h"
#include "ui/choosers.h"
#include "ui/desktop_actions.h"
#include "ui/explain.h"
#include "ui/find_bar.h"
#include "ui/listing_paper.h"
#include "ui/listing_window.h"
#include "ui/named.h"
#include "ui/program_commands.h"
#include "ui/qt_text.h"
#include "ui/wait_cursor.h"

namespace ledrix {
namespace {

constexpr int64_t kMostCopied = 200000;  // lines
constexpr int kMessageMilliseconds = 5000;

// Where the header's path leads: a converted copy's name has its charset behind the file's.
std::optional<NativePath> FileOfHeader(const HeaderFile& file) {
  std::string path = DecodeSjis(file.path);
  while (!path.empty()) {
    const Result<FileInfo> info = GetFileInfo(NativePath(path));
    if (info.ok() && info.value().kind == FileKind::kRegular) return NativePath(path);
    const size_t mark = path.rfind('_');
    const size_t name = path.find_last_of('/');
    if (mark == std::string::npos || (name != std::string::npos && mark < name)) break;
    path.resize(mark);
  }
  return std::nullopt;
}

struct Paper {
  const char* caption;
  const char* size;
  bool portrait;
};
constexpr Paper kPapers[] = {{"A4 横(&1)", "A4", false}, {"A4 縦(&2)", "A4", true},
                             {"B4 横(&3)", "B4", false}, {"B4 縦(&4)", "B4", true},
                             {"A3 横(&5)", "A3", false}, {"A3 縦(&6)", "A3", true}};

// Entries of a menu of which one holds; their names are `array` and their index.
void AddChoices(QMenu& menu, const char* array, const QStringList& captions,
                const std::function<int()>& current, const std::function<void(int)>& choose) {
  auto* const group = new QActionGroup(&menu);
  for (int i = 0; i < captions.size(); ++i) {
    QAction* const action = Named(menu.addAction(captions[i]), array, i);
    action->setCheckable(true);
    group->addAction(action);
    QObject::connect(action, &QAction::triggered, &menu, [choose, i] { choose(i); });
  }
  QObject::connect(&menu, &QMenu::aboutToShow, &menu,
                   [group, current] { group->actions()[current()]->setChecked(true); });
}

struct Place {
  bool is_block;
  int64_t number;
};

// Asks for a block or a line; nothing when the user cancelled.
std::optional<Place> AskPlace(QWidget& parent, bool has_blocks) {
  QDialog dialog(&parent);
  Named(&dialog, "GoToDialog");
  dialog.setWindowTitle("移動");
  auto* const number = Named(new QLineEdit, "GoToNumber");
  number->setValidator(
      new QRegularExpressionValidator(QRegularExpression("[1-9][0-9]{0,11}"), number));
  auto* const block = Named(new QRadioButton("ブロック番号(&B)"), "GoToBlock");
  auto* const line = Named(new QRadioButton("結果ﾘｽﾄの行番号(&L)"), "GoToLine");
  block->setEnabled(has_blocks);
  (has_blocks ? block : line)->setChecked(true);
  auto* const buttons = new QDialogButtonBox;
  buttons->addButton("移動", QDialogButtonBox::AcceptRole);
  buttons->addButton("取り消し", QDialogButtonBox::RejectRole);
  auto* const form = new QFormLayout(&dialog);
  form->addRow("番号(&N)", number);
  form->addRow(block);
  form->addRow(line);
  form->addRow(buttons);
  Explain(dialog);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  if (dialog.exec() != QDialog::Accepted || number->text().isEmpty()) return std::nullopt;
  return Place{block->isChecked(), number->text().toLongLong()};
}

}  // namespace

void ListingWindow::Add(QMenu* menu, const char* name, const char* caption, const QKeySequence& key,
                        std::function<void()> command) {
  QAction* const action = Named(menu->addAction(caption), name);
  action->setShortcut(key);
  connect(action, &QAction::triggered, this, [command = std::move(command)] { command(); });
}

void ListingWindow::MakeMenus() {
  MakeFileMenu();
  MakeEditMenu();
  MakeViewMenu();
  view_->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(view_, &QWidget::customContextMenuRequested, this, [this](const QPoint& place) {
    findChild<QMenu*>("MenuViewEdit")->popup(view_->viewport()->mapToGlobal(place));
  });
}

void ListingWindow::MakeFileMenu() {
  QMenu* const menu = Named(menuBar()->addMenu("ﾌｧｲﾙ(&F)"), "MenuViewFile");
  if (file_->shape() != nullptr) {
    Add(menu, "MenuViewOpenOld", "旧ﾌｧｲﾙを開く(&O)", {}, [this] { OpenSide(Side::kOld); });
    Add(menu, "MenuViewOpenNew", "新ﾌｧｲﾙを開く(&N)", {}, [this] { OpenSide(Side::kNew); });
    menu->addSeparator();
  }
  Add(menu, "MenuViewPrint", "印刷(&P)...", QKeySequence::Print, [this] { PrintOnPaper(); });
  Add(menu, "MenuViewPdf", "PDF に出力(&D)...", {}, [this] { SavePdf(); });
  QStringList papers;
  for (const Paper& paper : kPapers) papers.append(paper.caption);
  AddChoices(
      *Named(menu->addMenu("用紙(&S)"), "MenuViewPapers"), "MenuViewPaper", papers,
      [this] { return PaperChoice(); },
      [this](int choice) {
        program_.store.WriteSetting("Viewer", "Paper", std::to_string(choice));
      });
  menu->addSeparator();
  Add(menu, "MenuViewClose", "閉じる(&C)", QKeySequence("Ctrl+W"), [this] { close(); });
}

void ListingWindow::MakeEditMenu() {
  QMenu* const menu = Named(menuBar()->addMenu("編集(&E)"), "MenuViewEdit");
  Add(menu, "MenuViewCopy", "コピー(&C)", QKeySequence::Copy, [this] { CopyRows(); });
  if (file_->shape() != nullptr) {
    Add(menu, "MenuViewCopyOld", "旧側の文字列をコピー(&O)", QKeySequence("Ctrl+Shift+O"),
        [this] { CopySide(Side::kOld); });
    Add(menu, "MenuViewCopyNew", "新側の文字列をコピー(&N)", QKeySequence("Ctrl+Shift+N"),
        [this] { CopySide(Side::kNew); });
  }
  Add(menu, "MenuViewSelectAll", "すべて選択(&A)", QKeySequence::SelectAll,
      [this] { view_->SelectAll(); });
  menu->addSeparator();
  Add(menu, "MenuViewFind", "検索(&F)", QKeySequence::Find, [this] { OpenFind(); });
  const auto go = [this](bool forward) {
    if (!find_->isVisible()) return OpenFind();
    search_.Go(forward, view_->current());
  };
  Add(menu, "MenuViewFindNext", "次を検索(&X)", QKeySequence("F3"), [go] { go(true); });
  Add(menu, "MenuViewFindPrevious", "前を検索(&V)", QKeySequence("Shift+F3"), [go] { go(false); });
}

void ListingWindow::MakeViewMenu() {
  QMenu* const menu = Named(menuBar()->addMenu("表示(&V)"), "MenuViewView");
  if (file_->shape() != nullptr) {
    Add(menu, "MenuViewNextBlock", "次のブロック(&N)", QKeySequence("F8"),
        [this] { GoToBlock(true); });
    Add(menu, "MenuViewPreviousBlock", "前のブロック(&P)", QKeySequence("F7"),
        [this] { GoToBlock(false); });
  }
  Add(menu, "MenuViewGoTo", "移動(&G)...", QKeySequence("Ctrl+G"), [this] { AskForPlace(); });
  menu->addSeparator();
  Add(menu, "MenuViewLarger", "拡大(&L)", QKeySequence::ZoomIn, [this] { Zoom(1); });
  Add(menu, "MenuViewSmaller", "縮小(&S)", QKeySequence::ZoomOut, [this] { Zoom(-1); });
  Add(menu, "MenuViewUsual", "標準の大きさ(&0)", QKeySequence("Ctrl+0"), [this] { Zoom(0); });
  // "+" without the Shift key, as it is on many keyboards.
  findChild<QAction*>("MenuViewLarger")
      ->setShortcuts({QKeySequence::ZoomIn, QKeySequence("Ctrl+;"), QKeySequence("Ctrl+=")});
  menu->addSeparator();
  AddChoices(
      *Named(menu->addMenu("配色(&C)"), "MenuViewColors"), "MenuViewScheme",
      {"自動(&A)", "明るい(&L)", "暗い(&D)", "ハイコントラスト(&H)"},
      [this] { return static_cast<int>(view_->scheme()); },
      [this](int scheme) { SetScheme(scheme); });
  menu->addSeparator();
  Add(menu, "MenuViewHelp", "ﾍﾙﾌﾟ(&H)", QKeySequence(Qt::Key_F1),
      [this] { ShowHelp(program_.actions, program_.platform); });
}

void ListingWindow::AskForPlace() {
  const std::vector<ListingBlock>& blocks = file_->blocks();
  const std::optional<Place> place = AskPlace(*this, !blocks.empty());
  if (!place) return;
  const auto last = static_cast<int64_t>(place->is_block ? blocks.size() : file_->lines());
  const int64_t index = std::clamp<int64_t>(place->number, 1, std::max<int64_t>(last, 1)) - 1;
  view_->GoTo(place->is_block ? blocks[static_cast<size_t>(index)].first : index);
}

bool ListingWindow::IsTooMuchToCopy() {
  const auto [first, last] = view_->selection();
  if (last - first < kMostCopied) return false;
  program_.platform.ShowMessage({"一度にコピーできるのは 200,000 行までです"});
  return true;
}

void ListingWindow::CopyRows() {
  if (IsTooMuchToCopy()) return;
  const auto [first, last] = view_->selection();
  QString text;
  for (int64_t line = first; line <= std::min(last, file_->lines() - 1); ++line) {
    QString row = ToQString(ToUtf8(file_->TextAt(line)));
    while (row.endsWith(' ')) row.chop(1);
    text += row + "\n";
  }
  program_.actions.SetClipboardText(text);
}

void ListingWindow::CopySide(Side side) {
  if (IsTooMuchToCopy()) return;
  const auto [first, last] = view_->selection();
  QString text;
  int64_t end = 0;
  int maybe_cut = 0;
  for (int64_t line = file_->FirstRowOf(first); line <= std::min(last, file_->lines() - 1);
       line = end) {
    end = file_->EndOfChange(line);
    const std::optional<std::string> shown = file_->SideTextAt(line, side);
    if (shown) text += ToQString(*shown) + "\n";
    if (file_->MayBeCut(end - 1, side)) ++maybe_cut;
  }
  program_.actions.SetClipboardText(text);
  QString note;
  if (side == Side::kOld && file_->shape()->style.vertical)
    note = "縦交互の結果ﾘｽﾄなので、一致する行は新側の文字列です";
  if (maybe_cut > 0)
    note =
        QString("%1 行は出力幅いっぱいまであり、続きが結果ﾘｽﾄにない場合があります").arg(maybe_cut);
  if (!note.isEmpty()) statusBar()->showMessage(note, kMessageMilliseconds);
}

void ListingWindow::OpenSide(Side side) {
  const HeaderFile& file = file_->shape()->files[side];
  const std::optional<NativePath> path = FileOfHeader(file);
  if (!path) {
    program_.platform.ShowMessage(
        {"ファイルが見つかりません\r\n" + DecodeSjis(file.path) +
         (file.is_whole ? "" : "\r\n（結果ﾘｽﾄにはパスの全体がない場合があります）")});
    return;
  }
  if (program_.actions.OpenFile(*path) == DesktopActions::OpenResult::kNoAssociation)
    Open(program_, *path);
}

int ListingWindow::PaperChoice() const {
  const int choice = LeadingInteger(program_.store.ReadSetting("Viewer", "Paper", "0"));
  return std::clamp<int>(choice, 0, static_cast<int>(std::size(kPapers)) - 1);
}

QPageLayout ListingWindow::PaperLayout() const {
  const Paper& paper = kPapers[PaperChoice()];
  return *MakePageLayout(paper.size, paper.portrait);
}

// What is drawn on paper is read before.
bool ListingWindow::ReadAll() {
  const WaitCursor wait;
  while (file_->ReadOn(size_t{1} << 24)) {
  }
  return file_->failure().ok();
}

void ListingWindow::PrintOnPaper() {
  QPrinter printer(QPrinter::HighResolution);
  printer.setPageLayout(PaperLayout());
  printer.setDocName(ToQString(NativePath(FileNameOf(path_))));
  QPrintDialog dialog(&printer, this);
  if (dialog.exec() != QDialog::Accepted || !ReadAll()) return;
  const WaitCursor wait;
  if (!DrawOnPaper(*file_, FileNameOf(path_), printer, [] { return true; }))
    program_.platform.ShowMessage({"印刷できません"});
}

void ListingWindow::SavePdf() {
  OutputChooser chooser(DirOf(path_));
  const NativePath path =
      chooser.Choose(this, {.title = "PDF に出力",
                            .filters = {ChooserFilter("PDF", "*.pdf")},
                            .name = ToQString(NativePath(FileNameOf(path_))) + ".pdf",
                            .suffix = "pdf"});
  if (path.empty() || !ReadAll()) return;
  Status status = RefuseOutput(path, {path_}, {});
  if (status.ok()) {
    const WaitCursor wait;
    status = WritePdf(*file_, FileNameOf(path_), path, PaperLayout(), [] { return true; });
  }
  if (!status.ok()) {
    program_.platform.ShowMessage(
        {"PDF を出力できません: " + DescribeError(status.error()) + "\r\n" + PathToUtf8(path)});
  }
}

}  // namespace ledrix
