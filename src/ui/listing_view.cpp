#include "ui/listing_view.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QScrollBar>
#include <algorithm>
#include <limits>

namespace ledrix {
namespace {

constexpr int kEdge = 14;  // pixels left of column 0, for the bar
constexpr int kEdgeBarLeft = 3;
constexpr int kEdgeBarWidth = 7;
constexpr int kSmallestFont = 8;
constexpr int kLargestFont = 64;

}  // namespace

ListingView::ListingView(QWidget* parent) : QAbstractScrollArea(parent) {
  setFocusPolicy(Qt::StrongFocus);
  viewport()->setCursor(Qt::ArrowCursor);
  viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
  MakePainter();
  UpdateColors();
}

QSize ListingView::sizeHint() const {
  return {static_cast<int>(painter_->column() * 188) + kEdge + 60,
          static_cast<int>(painter_->row() * 40)};
}

// An even number of pixels makes a column a whole one.
void ListingView::MakePainter() {
  QFont font = ColumnFont();
  font.setPixelSize(font_pixels_);
  painter_ = std::make_unique<RowPainter>(font, font_pixels_ / 2, font_pixels_ * 5 / 4, viewport());
}

void ListingView::UpdateColors() {
  colors_ = MakeListingColors(palette(), scheme_);
  viewport()->update();
}

void ListingView::SetFontPixels(int pixels) {
  const int64_t top = top_line();
  font_pixels_ = std::clamp(pixels / 2 * 2, kSmallestFont, kLargestFont);
  MakePainter();
  UpdateScrollBars();
  verticalScrollBar()->setValue(static_cast<int>(top));
  viewport()->update();
}

void ListingView::SetScheme(ColorScheme scheme) {
  scheme_ = scheme;
  UpdateColors();
}

void ListingView::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange) UpdateColors();
  QAbstractScrollArea::changeEvent(event);
}

void ListingView::Show(ViewedFile& file) {
  file_ = &file;
  found_.reset();
  if (file.shape() != nullptr) widest_ = file.shape()->format.listing_width();
  TakeGrowth();
}

void ListingView::TakeGrowth() {
  // A file that is read anew gets its lines back before it is known to be shorter.
  if (file_->is_read()) {
    current_ = std::clamp<int64_t>(current_, 0, std::max<int64_t>(lines() - 1, 0));
    anchor_ = std::min(anchor_, current_);
  }
  UpdateScrollBars();
  viewport()->update();
}

int64_t ListingView::top_line() const {
  return verticalScrollBar()->value();
}

int64_t ListingView::visible_lines() const {
  return std::max<int64_t>(1, viewport()->height() / static_cast<int>(painter_->row()));
}

void ListingView::UpdateScrollBars() {
  const auto most = static_cast<int64_t>(std::numeric_limits<int>::max());
  const int64_t hidden = std::clamp<int64_t>(lines() - visible_lines(), 0, most);
  // While the file is read again, its end does not pull the view up.
  const bool may_shrink = file_ == nullptr || file_->is_read();
  const int64_t range =
      may_shrink ? hidden : std::max<int64_t>(hidden, verticalScrollBar()->maximum());
  verticalScrollBar()->setRange(0, static_cast<int>(range));
  verticalScrollBar()->setPageStep(static_cast<int>(visible_lines()));
  const int columns = (viewport()->width() - kEdge) / static_cast<int>(painter_->column());
  horizontalScrollBar()->setRange(0, std::max(0, static_cast<int>(widest_) + 2 - columns));
  horizontalScrollBar()->setPageStep(columns);
  horizontalScrollBar()->setSingleStep(4);
}

void ListingView::resizeEvent(QResizeEvent* /*event*/) {
  UpdateScrollBars();
}

void ListingView::scrollContentsBy(int /*dx*/, int /*dy*/) {
  viewport()->update();
  if (on_moved_) on_moved_();
}

std::pair<int64_t, int64_t> ListingView::selection() const {
  return std::minmax(anchor_, current_);
}

void ListingView::SelectAll() {
  anchor_ = 0;
  current_ = std::max<int64_t>(lines() - 1, 0);
  viewport()->update();
}

void ListingView::MoveTo(int64_t line, bool extends) {
  current_ = std::clamp<int64_t>(line, 0, std::max<int64_t>(lines() - 1, 0));
  if (!extends) anchor_ = current_;
  if (current_ < top_line()) {
    verticalScrollBar()->setValue(static_cast<int>(current_));
  } else if (current_ >= top_line() + visible_lines()) {
    verticalScrollBar()->setValue(static_cast<int>(current_ - visible_lines() + 1));
  }
  viewport()->update();
  if (on_moved_) on_moved_();
}

void ListingView::GoTo(int64_t line) {
  const bool is_visible = line > top_line() && line + 3 < top_line() + visible_lines();
  if (!is_visible) {
    const int64_t above = std::min<int64_t>(visible_lines() / 4, 10);
    verticalScrollBar()->setValue(static_cast<int>(std::max<int64_t>(line - above, 0)));
  }
  MoveTo(line, false);
}

void ListingView::ShowColumns(FoundText columns) {
  const int shown = horizontalScrollBar()->pageStep();
  const int value = horizontalScrollBar()->value();
  const int begin = static_cast<int>(columns.begin);
  const int end = static_cast<int>(columns.end);
  widest_ = std::max(widest_, columns.end);
  UpdateScrollBars();
  if (begin < value || end > value + shown)
    horizontalScrollBar()->setValue(std::max(0, end - shown + 8));
}

void ListingView::SetFinder(std::optional<TextFinder> finder) {
  finder_ = std::move(finder);
  viewport()->update();
}

void ListingView::SetFound(std::optional<FoundPlace> found) {
  found_ = found;
  viewport()->update();
}

void ListingView::keyPressEvent(QKeyEvent* event) {
  const bool extends = event->modifiers().testFlag(Qt::ShiftModifier);
  switch (event->key()) {
    case Qt::Key_Up:
      return MoveTo(current_ - 1, extends);
    case Qt::Key_Down:
      return MoveTo(current_ + 1, extends);
    case Qt::Key_PageUp:
      return MoveTo(current_ - visible_lines(), extends);
    case Qt::Key_PageDown:
    case Qt::Key_Space:
      return MoveTo(current_ + visible_lines(), extends);
    case Qt::Key_Home:
      horizontalScrollBar()->setValue(0);
      return MoveTo(0, extends);
    case Qt::Key_End:
      return MoveTo(lines() - 1, extends);
    case Qt::Key_Left:
      horizontalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepSub);
      return;
    case Qt::Key_Right:
      horizontalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
      return;
    default:
      QAbstractScrollArea::keyPressEvent(event);
  }
}

int64_t ListingView::LineAtPoint(const QPoint& point) const {
  const auto row = static_cast<int>(painter_->row());
  return top_line() + (point.y() < 0 ? -1 : point.y() / row);
}

void ListingView::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::RightButton) {
    const auto [first, last] = selection();
    const int64_t line = LineAtPoint(event->pos());
    if (line >= first && line <= last) return;  // the menu is for the selection
  }
  MoveTo(LineAtPoint(event->pos()), event->modifiers().testFlag(Qt::ShiftModifier));
}

void ListingView::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons().testFlag(Qt::LeftButton)) MoveTo(LineAtPoint(event->pos()), true);
}

void ListingView::wheelEvent(QWheelEvent* event) {
  if (event->modifiers().testFlag(Qt::ControlModifier)) {
    if (on_zoom_ && event->angleDelta().y() != 0) on_zoom_(event->angleDelta().y() > 0 ? 1 : -1);
    return;
  }
  QAbstractScrollArea::wheelEvent(event);
}

void ListingView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(viewport());
  painter.fillRect(viewport()->rect(), colors_.back);
  if (file_ == nullptr) return;
  painter.setFont(painter_->font());
  const size_t before = widest_;
  const int64_t end = std::min(lines(), top_line() + visible_lines() + 1);
  for (int64_t line = top_line(); line < end; ++line) {
    PaintRow(painter, line, static_cast<qreal>(line - top_line()) * painter_->row());
  }
  if (widest_ > before)
    QMetaObject::invokeMethod(
        this, [this] { UpdateScrollBars(); }, Qt::QueuedConnection);
}

void ListingView::PaintRow(QPainter& painter, int64_t line, qreal top) {
  const RowKind kind = file_->KindAt(line);
  const RowColors look = colors_.Of(file_->ChangeAt(line));
  const auto [first, last] = selection();
  const bool is_selected = line >= first && line <= last && (first != last || hasFocus());
  const auto width = static_cast<qreal>(viewport()->width());
  const QRectF row(0, top, width, painter_->row());
  if (look.back.isValid()) painter.fillRect(row, look.back);
  if (is_selected && first != last) painter.fillRect(row, colors_.selected_back);
  painter.fillRect(QRectF(0, top, kEdge - 2, painter_->row()), colors_.back);
  DrawBar(painter, QRectF(kEdgeBarLeft, top, kEdgeBarWidth, painter_->row()), look);

  const LineText text = file_->TextAt(line);
  widest_ = std::max(widest_, WidthOf(text));
  const auto left = static_cast<size_t>(horizontalScrollBar()->value());
  const qreal column = painter_->column();
  const size_t end = left + static_cast<size_t>(width / column) + 2;
  const QPointF origin(kEdge - column * static_cast<qreal>(left), top);
  painter.save();
  painter.setClipRect(QRectF(kEdge, top, width - kEdge, painter_->row()));
  PaintFound(painter, line, text, origin);
  const bool is_dim = kind == RowKind::kOmission;
  const bool is_marker = kind == RowKind::kBlockStart || kind == RowKind::kBlockEnd;
  const QColor plain = is_marker ? look.bar : is_dim ? colors_.dim : colors_.text;
  painter.setPen(is_selected && first != last ? colors_.selected_text : plain);
  painter_->Draw(painter, origin, text, left, end);
  for (const Stretch& stretch : file_->StretchesAt(line))
    painter_->Underline(painter, origin, stretch.begin, stretch.end,
                        is_selected && first != last ? colors_.selected_text : look.bar);
  if (is_selected && first == last) {
    painter.setPen(QPen(colors_.selected_back, 1, Qt::DotLine));
    painter.drawRect(QRectF(kEdge, top, width - kEdge - 1, painter_->row() - 1));
  }
  painter.restore();
}

void ListingView::PaintFound(QPainter& painter, int64_t line, const LineText& text,
                             QPointF origin) {
  if (!finder_) return;
  for (const FoundText& found : finder_->FindIn(text)) {
    const bool is_current = found_ == FoundPlace{line, found};
    const qreal begin = painter_->column() * static_cast<qreal>(found.begin);
    const qreal size = painter_->column() * static_cast<qreal>(found.end - found.begin);
    const QRectF place(origin.x() + begin, origin.y(), size, painter_->row());
    painter.fillRect(place, is_current ? colors_.current_found : colors_.found);
    if (!is_current) continue;
    painter.setPen(QPen(colors_.text, 1));
    painter.drawRect(place.adjusted(0, 0, -1, -1));
  }
}

}  // namespace ledrix
