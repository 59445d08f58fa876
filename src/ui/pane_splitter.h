// Two panes side by side and the bar between them.
#pragma once

#include <QSplitter>

namespace ledrix {

class PaneSplitter : public QSplitter {
 public:
  // Owns the panes. `bar` is the name of the bar.
  PaneSplitter(QWidget* first, QWidget* second, const char* bar);

  // Device-independent pixels. A width beyond the splitter's is cut; the second pane takes the
  // rest.
  int first_width() const { return sizes().first(); }
  void SetFirstWidth(int width);
  // Whether the user can move the bar.
  void LetBarMove(bool movable);
};

}  // namespace ledrix
