// The rows of a listing, or of any text: scrolled, selected, coloured.
#pragma once

#include <QAbstractScrollArea>
#include <QEvent>
#include <functional>
#include <memory>
#include <optional>

#include "listing/text_finder.h"
#include "listing/viewed_file.h"
#include "ui/listing_colors.h"
#include "ui/row_painter.h"

namespace ledrix {

// Where a text was found.
struct FoundPlace {
  int64_t line = 0;
  FoundText columns;

  friend bool operator==(const FoundPlace&, const FoundPlace&) = default;
};

// Lines are counted from 0.
class ListingView : public QAbstractScrollArea {
 public:
  explicit ListingView(QWidget* parent = nullptr);

  // Shows a file; the view stays at its lines as far as the file has them. `file` may be read on
  // and must outlive the view or the next call.
  void Show(ViewedFile& file);
  // More of the file was read.
  void TakeGrowth();

  // The line that the keys move.
  int64_t current() const { return current_; }
  // Makes a line the only selected one and shows it, some lines below the upper edge when it was
  // not to be seen.
  void GoTo(int64_t line);
  void ShowColumns(FoundText columns);
  // First and last line of the selection.
  std::pair<int64_t, int64_t> selection() const;
  void SelectAll();

  // What is highlighted in the rows; nothing without a finder.
  void SetFinder(std::optional<TextFinder> finder);
  void SetFound(std::optional<FoundPlace> found);

  // Pixels of the font, even; 8 to 64.
  int font_pixels() const { return font_pixels_; }
  void SetFontPixels(int pixels);
  ColorScheme scheme() const { return scheme_; }
  void SetScheme(ColorScheme scheme);

  int64_t top_line() const;
  int64_t visible_lines() const;

  // Called when another line is current, and when other lines are to be seen.
  void OnMoved(std::function<void()> hook) { on_moved_ = std::move(hook); }
  void OnZoom(std::function<void(int steps)> hook) { on_zoom_ = std::move(hook); }

  QSize sizeHint() const override;

 protected:
  // No tool tip lies over the rows.
  bool viewportEvent(QEvent* event) override {
    return event->type() == QEvent::ToolTip || QAbstractScrollArea::viewportEvent(event);
  }
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void MakePainter();
  void UpdateColors();
  void UpdateScrollBars();
  void PaintRow(QPainter& painter, int64_t line, qreal top);
  void PaintFound(QPainter& painter, int64_t line, const LineText& text, QPointF origin);
  void MoveTo(int64_t line, bool extends);
  int64_t LineAtPoint(const QPoint& point) const;
  int64_t lines() const { return file_ == nullptr ? 0 : file_->lines(); }

  ViewedFile* file_ = nullptr;
  std::unique_ptr<RowPainter> painter_;
  ListingColors colors_;
  ColorScheme scheme_ = ColorScheme::kAuto;
  int font_pixels_ = 14;
  size_t widest_ = 80;  // columns of the widest line seen
  int64_t current_ = 0;
  int64_t anchor_ = 0;  // where the selection began
  std::optional<TextFinder> finder_;
  std::optional<FoundPlace> found_;
  std::function<void()> on_moved_;
  std::function<void(int)> on_zoom_;
};

}  // namespace ledrix
