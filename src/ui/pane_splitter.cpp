#include "ui/pane_splitter.h"

#include <algorithm>

#include "ui/named.h"

namespace ledrix {

PaneSplitter::PaneSplitter(QWidget* first, QWidget* second, const char* bar)
    : QSplitter(Qt::Horizontal) {
  setOpaqueResize(false);
  setChildrenCollapsible(false);
  addWidget(first);
  addWidget(second);
  setStretchFactor(0, 0);
  setStretchFactor(1, 1);
  Named(handle(1), bar);
}

void PaneSplitter::SetFirstWidth(int width) {
  const int all = this->width() - handleWidth();
  const int first = std::clamp(width, 0, std::max(all, 0));
  setSizes({first, all - first});
}

void PaneSplitter::LetBarMove(bool movable) {
  handle(1)->setEnabled(movable);
}

}  // namespace ledrix
