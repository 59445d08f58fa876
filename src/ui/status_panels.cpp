#include "ui/status_panels.h"

#include <QLabel>
#include <QStatusBar>

#include "ui/named.h"
#include "ui/qt_text.h"

namespace ledrix {
namespace {

QLabel* Panel(const char* name) {
  auto* const label = Named(new QLabel, name);
  label->setTextFormat(Qt::PlainText);
  return label;
}

// Its text is cut off rather than making the window wider.
QLabel* LongPanel(const char* name) {
  QLabel* const label = Panel(name);
  label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  return label;
}

}  // namespace

StatusPanels::StatusPanels(QStatusBar& bar)
    : PanelOld(Panel("PanelOld")),
      PanelNew(Panel("PanelNew")),
      PanelPreview(LongPanel("PanelPreview")),
      PanelTrouble(LongPanel("PanelTrouble")) {
  bar.addWidget(PanelOld);
  bar.addWidget(PanelNew);
  bar.addWidget(PanelPreview, 1);
  PanelTrouble->hide();
  bar.addWidget(PanelTrouble, 1);
}

void StatusPanels::ShowCount(int side, size_t selected, int files) {
  const bool is_old = side == 0;
  (is_old ? PanelOld : PanelNew)
      ->setText(QString(" %1 %2/%3 ").arg(is_old ? "Old" : "New").arg(selected).arg(files));
}

void StatusPanels::ShowPreview(const QString& preview) {
  PanelPreview->setText(preview);
  PanelPreview->setToolTip(preview.trimmed());
}

void StatusPanels::ShowTrouble(const std::string& line) {
  PanelTrouble->setText("⚠ " + ToQString(line));
  PanelTrouble->setToolTip(ToQString(line));
  PanelTrouble->show();
}

void StatusPanels::HideTrouble() {
  PanelTrouble->hide();
}

}  // namespace ledrix
