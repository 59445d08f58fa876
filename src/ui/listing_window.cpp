#include "ui/listing_window.h"

#include <QElapsedTimer>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QStatusBar>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/fixed_width.h"
#include "platform/services.h"
#include "settings/settings_store.h"
#include "text/leading_number.h"
#include "ui/explain.h"
#include "ui/find_bar.h"
#include "ui/listing_map.h"
#include "ui/named.h"
#include "ui/qt_text.h"

namespace ledrix {
namespace {

constexpr qint64 kReadMilliseconds = 12;
constexpr size_t kSliceBytes = size_t{1} << 20;
constexpr int kFollowMilliseconds = 1000;

QString Number(int64_t number) {
  return ToQString(FormatThousands(number));
}

}  // namespace

// Ends in an ellipsis where the window is too narrow, and tells the whole as a tool tip.
class ListingWindow::StatusLabel : public QLabel {
 public:
  QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }

  void Show(const QString& shown) {
    setVisible(!shown.isEmpty());
    setText(shown);
    setToolTip(shown);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    style()->drawItemText(&painter, contentsRect(), Qt::AlignLeft | Qt::AlignVCenter, palette(),
                          isEnabled(), fontMetrics().elidedText(text(), Qt::ElideRight, width()));
  }
};

ListingWindow* ListingWindow::Open(const Program& program, const NativePath& path) {
  Result<ViewedFile> file = ViewedFile::Open(path);
  if (!file.ok()) {
    program.platform.ShowMessage(
        {"表示できません: " + DescribeError(file.error()) + "\r\n" + PathToUtf8(path)});
    return nullptr;
  }
  auto* const window = new ListingWindow(program, path, std::move(file.value()));
  const QSize room = window->screen()->availableSize() * 19 / 20;
  window->resize(window->sizeHint().boundedTo(room));
  window->show();
  return window;
}

ListingWindow::ListingWindow(const Program& program, NativePath path, ViewedFile file)
    : program_(program),
      path_(std::move(path)),
      file_(std::make_unique<ViewedFile>(std::move(file))),
      search_([this] { ShowFound(); }) {
  Named(this, "ListingWindow");
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(ToQString(NativePath(FileNameOf(path_))) + " - Ledrix");
  MakeLayout();
  MakeMenus();
  Explain(*this);
  const SettingsStore& store = program_.store;
  view_->SetScheme(static_cast<ColorScheme>(
      std::clamp<int>(LeadingInteger(store.ReadSetting("Viewer", "Scheme", "0")), 0, 3)));
  view_->SetFontPixels(LeadingInteger(store.ReadSetting("Viewer", "FontPixels", "14")));
  view_->Show(*file_);
  map_->Show(*file_);
  connect(&reading_, &QTimer::timeout, this, [this] { ReadOn(); });
  connect(&following_, &QTimer::timeout, this, [this] { FollowFile(); });
  reading_.start(0);
  following_.start(kFollowMilliseconds);
  ReadOn();
}

void ListingWindow::MakeLayout() {
  auto* const middle = new QWidget;
  view_ = Named(new ListingView, "ListingView");
  map_ = Named(new ListingMap(*view_), "ListingMap");
  find_ = Named(new FindBar({.changed = [this] { SearchAnew(); },
                             .go = [this](bool forward) { search_.Go(forward, view_->current()); },
                             .closed = [this] { CloseFind(); }}),
                "FindBar");
  find_->hide();
  auto* const row = new QHBoxLayout;
  row->setSpacing(0);
  row->addWidget(view_, 1);
  row->addWidget(map_);
  auto* const rows = new QVBoxLayout(middle);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  rows->addLayout(row, 1);
  rows->addWidget(find_);
  setCentralWidget(middle);
  block_text_ = Named(new QLabel, "ViewBlock");
  counts_text_ = Named(new StatusLabel, "ViewCounts");
  options_text_ = Named(new StatusLabel, "ViewOptions");
  options_text_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  statusBar()->addWidget(block_text_);
  statusBar()->addWidget(counts_text_);
  statusBar()->addWidget(options_text_, 1);
  view_->OnMoved([this] { ShowState(); });
  view_->OnZoom([this](int steps) { Zoom(steps); });
  map_->OnJump([this](int64_t line) { view_->GoTo(line); });
  setFocusProxy(view_);
  view_->setFocus();
}

// Reads for a short while; the window lives on in between.
void ListingWindow::ReadOn() {
  QElapsedTimer slice;
  slice.start();
  bool more = true;
  while (more && slice.elapsed() < kReadMilliseconds) more = file_->ReadOn(kSliceBytes);
  if (!more) reading_.stop();
  view_->TakeGrowth();
  map_->update();
  ShowState();
}

// Shows the file anew when another one stands at its path, or it was written.
void ListingWindow::FollowFile() {
  const Result<FileInfo> info = GetFileInfo(path_);
  const bool was_gone = std::exchange(is_gone_, !info.ok());
  if (is_gone_) {
    ShowState();
    return;
  }
  const FileInfo& seen = file_->info();
  if (IsSameFile(info.value(), seen) && HaveSameStamp(info.value(), seen)) {
    if (was_gone) ShowState();
    return;
  }
  Result<ViewedFile> opened = ViewedFile::Open(path_);
  if (!opened.ok()) return;
  search_.Stop();
  auto file = std::make_unique<ViewedFile>(std::move(opened.value()));
  view_->Show(*file);
  map_->Show(*file);
  file_ = std::move(file);
  if (find_->isVisible()) SearchAnew();
  reading_.start(0);
  ReadOn();
}

QString ListingWindow::StateText() const {
  if (is_gone_) return "ファイルがなくなりました（最後に読んだ内容を表示しています）";
  const QString line = "行 " + Number(std::min(view_->current() + 1, file_->lines())) + " / " +
                       Number(file_->lines());
  if (!file_->failure().ok())
    return "途中まで: " + ToQString(DescribeError(file_->failure().error()));
  if (!file_->is_read()) {
    const uint64_t size = std::max<uint64_t>(file_->info().size, 1);
    return line + QString("  読み込み中 %1 %").arg(file_->read() * 100 / size);
  }
  if (file_->shape() == nullptr) {
    return line + "  " + modJudgeCode::ToText(file_->code()) +
           (file_->has_cut_lines() ? "  長すぎる行は先頭だけを表示しています" : "");
  }
  const auto block = BlockAt(file_->blocks(), view_->current());
  const char* const hidden = file_->HidesDifference(view_->current())
                                 ? "  （異なる部分は出力幅の外か、行末のスペースです）"
                                 : "";
  return "ブロック " + Number(block ? static_cast<int64_t>(*block) + 1 : 0) + " / " +
         Number(static_cast<int64_t>(file_->blocks().size())) + "  " + line + hidden;
}

QString ListingWindow::CountsText() const {
  if (file_->shape() == nullptr || !file_->is_read()) return {};
  const ChangeCounts& counts = file_->counts();
  QString text = "変更 " + Number(counts.changed) + "  追加 " + Number(counts.added) + "  削除 " +
                 Number(counts.deleted) + "  合計 " + Number(counts.total());
  const std::optional<ListingSummary>& summary = file_->summary();
  if (!summary) return text + "  （集計がありません。途中で終わっています）";
  text += "  行数 旧 " + ToQString(summary->old_lines) + " 新 " + ToQString(summary->new_lines);
  return summary->Agrees(counts) ? text : text + "  （結果ﾘｽﾄの集計と一致しません）";
}

void ListingWindow::ShowState() {
  block_text_->setText(StateText());
  counts_text_->Show(CountsText());
  options_text_->Show(file_->shape() == nullptr ? "" : ToQString(file_->shape()->conditions));
  map_->update();
}

void ListingWindow::GoToBlock(bool forward) {
  const auto block = forward ? BlockBehind(file_->blocks(), view_->current())
                             : BlockBefore(file_->blocks(), view_->current());
  if (block) view_->GoTo(file_->blocks()[*block].first);
}

void ListingWindow::OpenFind() {
  find_->Open();
  SearchAnew();
}

void ListingWindow::CloseFind() {
  find_->hide();
  search_.Stop();
  view_->SetFinder(std::nullopt);
  view_->SetFound(std::nullopt);
  view_->setFocus();
}

void ListingWindow::SearchAnew() {
  const TextFinder finder = find_->Finder();
  view_->SetFound(std::nullopt);
  view_->SetFinder(finder);
  search_.Start(*file_, finder);
  if (finder.is_empty()) {
    ShowFound();
  } else {
    search_.Go(true, view_->current());
  }
}

void ListingWindow::ShowFound() {
  find_->Tell(search_);
  const std::optional<FoundPlace>& found = search_.current();
  view_->SetFound(found);
  if (!found || found->line == view_->current()) {
    if (found) view_->ShowColumns(found->columns);
    return;
  }
  view_->GoTo(found->line);
  view_->ShowColumns(found->columns);
}

void ListingWindow::Zoom(int steps) {
  view_->SetFontPixels(steps == 0 ? 14 : view_->font_pixels() + 2 * steps);
  program_.store.WriteSetting("Viewer", "FontPixels", std::to_string(view_->font_pixels()));
}

void ListingWindow::SetScheme(int scheme) {
  view_->SetScheme(static_cast<ColorScheme>(scheme));
  map_->update();
  program_.store.WriteSetting("Viewer", "Scheme", std::to_string(scheme));
}

void ListingWindow::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange && map_ != nullptr) map_->update();
  QMainWindow::changeEvent(event);
}

}  // namespace ledrix
