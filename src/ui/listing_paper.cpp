#include "ui/listing_paper.h"

#include <QIODevice>
#include <QPainter>
#include <QPdfWriter>
#include <cerrno>
#include <cmath>

#include "listing/paper_pages.h"
#include "platform/local_time.h"
#include "platform/output_file.h"
#include "ui/listing_colors.h"
#include "ui/qt_text.h"
#include "ui/row_painter.h"

namespace ledrix {
namespace {

constexpr qreal kSideMargin = 6;  // millimetres
constexpr qreal kEndMargin = 8;
constexpr qreal kRowHeight = 1.2;      // in sizes of the font
constexpr qreal kLargestPlain = 9;     // points, of a text that is no listing
constexpr size_t kPlainColumns = 100;  // of such a text, at least
constexpr qreal kPointsPerInch = 72;
constexpr int kPdfResolution = 1440;  // makes half a point ten units: columns are whole

// A PDF file is written through an output of ours, whose every write is checked.
class OutputDevice : public QIODevice {
 public:
  explicit OutputDevice(OutputFile& file) : file_(file) { open(QIODevice::WriteOnly); }
  bool isSequential() const override { return true; }

 protected:
  qint64 readData(char* /*data*/, qint64 /*size*/) override { return -1; }
  qint64 writeData(const char* data, qint64 size) override {
    file_.Write({data, static_cast<size_t>(size)});
    return file_.failure().ok() ? size : -1;
  }

 private:
  OutputFile& file_;
};

// One print of one file. Lengths are in the device's units.
class Print {
 public:
  Print(ViewedFile& file, const std::string& name, QPagedPaintDevice& device)
      : file_(file),
        name_(name),
        device_(device),
        unit_(device.logicalDpiX() / kPointsPerInch),
        area_(device.pageLayout().paintRectPixels(device.logicalDpiX())),
        columns_(Columns()),
        rows_(MakeRows()) {}

  bool Run(const std::function<bool()>& go_on) {
    painter_.begin(&device_);
    if (!painter_.isActive()) return false;
    painter_.setFont(rows_.font());
    const size_t pages = CountPages();
    PaperPages filler(file_, columns_, RowsPerPage());
    std::vector<PaperRow> page;
    for (size_t number = 1; filler.Next(page); ++number) {
      if (!go_on() || (number > 1 && !device_.newPage())) return false;
      DrawPage(page, number, pages);
    }
    return painter_.end();
  }

 private:
  const ListingShape* shape() const { return file_.shape(); }

  size_t Columns() const {
    if (shape() != nullptr) return shape()->format.listing_width();
    return std::max(kPlainColumns,
                    static_cast<size_t>(area_.width() / (kLargestPlain * unit_ / 2)));
  }

  // The largest whole half point at which the columns fit.
  RowPainter MakeRows() const {
    const qreal fitting = area_.width() / unit_ / (static_cast<qreal>(columns_) / 2);
    const qreal points = std::max(std::floor(fitting * 2) / 2, 0.5);
    QFont font = ColumnFont();
    font.setPixelSize(static_cast<int>(std::lround(points * unit_)));
    return {font, points * unit_ / 2, points * unit_ * kRowHeight, &device_};
  }

  size_t header_lines() const {
    return shape() == nullptr ? 0 : static_cast<size_t>(shape()->header_lines);
  }

  // The page head takes two rows.
  size_t RowsPerPage() const {
    const auto all = static_cast<size_t>(area_.height() / rows_.row());
    return std::max<size_t>(all, header_lines() + 3) - header_lines() - 2;
  }

  size_t CountPages() {
    PaperPages filler(file_, columns_, RowsPerPage());
    std::vector<PaperRow> page;
    size_t pages = 0;
    while (filler.Next(page)) ++pages;
    return pages;
  }

  qreal Left() const { return (area_.width() - rows_.column() * static_cast<qreal>(columns_)) / 2; }

  void DrawPage(const std::vector<PaperRow>& page, size_t number, size_t pages) {
    painter_.setPen(Qt::black);
    DrawHead(number, pages);
    qreal top = 2 * rows_.row();
    for (size_t line = 0; line < header_lines(); ++line, top += rows_.row())
      rows_.Draw(painter_, {Left(), top}, file_.TextAt(static_cast<int64_t>(line)), 0, columns_);
    for (const PaperRow& row : page) {
      DrawRow(row, top);
      top += rows_.row();
    }
  }

  void DrawHead(size_t number, size_t pages) {
    const FileInfo& info = file_.info();
    LineText left = DecodeUtf8Line(name_);
    const LineText right =
        DecodeUtf8Line("更新 " + FormatStamp(ToLocalTime(info.modified)) + "    ページ " +
                       std::to_string(number) + " / " + std::to_string(pages));
    const size_t right_at = columns_ - std::min(columns_, WidthOf(right));
    while (!left.empty() && WidthOf(left) + 2 > right_at) left.erase(left.begin());
    rows_.Draw(painter_, {Left(), 0}, left, 0, columns_);
    rows_.Draw(painter_, {Left() + rows_.column() * static_cast<qreal>(right_at), 0}, right, 0,
               columns_);
    const qreal thin = unit_ / 4;
    painter_.fillRect(
        QRectF(Left(), 1.3 * rows_.row(), rows_.column() * static_cast<qreal>(columns_), thin),
        Qt::black);
  }

  void DrawRow(const PaperRow& row, qreal top) {
    const RowColors look = colors_.Of(file_.ChangeAt(row.line));
    DrawBar(painter_, QRectF(Left() - 1.5 * rows_.column(), top, rows_.column(), rows_.row()),
            look);
    const QPointF origin(Left() - rows_.column() * static_cast<qreal>(row.begin), top);
    rows_.Draw(painter_, origin, file_.TextAt(row.line), row.begin, row.end);
    for (const Stretch& stretch : file_.StretchesAt(row.line)) {
      const size_t begin = std::max(stretch.begin, row.begin);
      const size_t end = std::min(stretch.end, row.end);
      if (begin < end) rows_.Underline(painter_, origin, begin, end, Qt::black);
    }
  }

  ViewedFile& file_;
  const std::string& name_;
  QPagedPaintDevice& device_;
  const qreal unit_;  // of the device, in a point
  const QRectF area_;
  const size_t columns_;
  const RowPainter rows_;
  const ListingColors colors_ = PaperColors();
  QPainter painter_;
};

}  // namespace

std::optional<QPageLayout> MakePageLayout(const std::string& size, bool portrait) {
  QPageSize::PageSizeId id{};
  if (size == "A4") {
    id = QPageSize::A4;
  } else if (size == "B4") {
    id = QPageSize::JisB4;
  } else if (size == "A3") {
    id = QPageSize::A3;
  } else {
    return std::nullopt;
  }
  return QPageLayout(QPageSize(id), portrait ? QPageLayout::Portrait : QPageLayout::Landscape,
                     QMarginsF(kSideMargin, kEndMargin, kSideMargin, kEndMargin),
                     QPageLayout::Millimeter);
}

bool DrawOnPaper(ViewedFile& file, const std::string& name, QPagedPaintDevice& device,
                 const std::function<bool()>& go_on) {
  return Print(file, name, device).Run(go_on);
}

Status WritePdf(ViewedFile& file, const std::string& name, const NativePath& path,
                const QPageLayout& layout, const std::function<bool()>& go_on) {
  Result<OutputFile> output = OutputFile::Create(path);
  if (!output.ok()) return output.error();
  bool is_drawn = false;
  {
    OutputDevice device(output.value());
    QPdfWriter writer(&device);
    writer.setResolution(kPdfResolution);
    writer.setPageLayout(layout);
    writer.setTitle(ToQString(name));
    writer.setCreator("Ledrix");
    is_drawn = DrawOnPaper(file, name, writer, go_on);
  }
  Status status = output.value().failure();
  if (status.ok() && !is_drawn) status = Error::System(EINTR);
  if (status.ok()) status = output.value().Close();
  if (!status.ok()) output.value().Discard();
  return status;
}

}  // namespace ledrix
