// Where the differences of a listing lie, beside its scroll bar.
#pragma once

#include <QWidget>
#include <functional>
#include <vector>

#include "ui/listing_view.h"

namespace ledrix {

class ListingMap : public QWidget {
 public:
  // `view` must outlive the map.
  explicit ListingMap(const ListingView& view, QWidget* parent = nullptr);

  // `file` must outlive the map or the next call.
  void Show(const ViewedFile& file);
  // A click on the map, with the line that lies there, from 0.
  void OnJump(std::function<void(int64_t)> hook) { on_jump_ = std::move(hook); }

  QSize sizeHint() const override { return {18, 100}; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  // What lies in one row of the map's pixels.
  struct PixelRow {
    bool changed = false;
    bool added = false;
    bool deleted = false;
  };
  std::vector<PixelRow> PixelRows() const;
  void Jump(const QPoint& place);

  const ListingView& view_;
  const ViewedFile* file_ = nullptr;
  std::function<void(int64_t)> on_jump_;
};

}  // namespace ledrix
