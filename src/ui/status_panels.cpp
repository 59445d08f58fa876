#include "ui/status_panels.h"

#include <QDialog>
#include <QEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QStatusBar>
#include <QVBoxLayout>
#include <functional>
#include <utility>

#include "platform/services.h"
#include "ui/explain.h"
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

// Every line that was told, to be read and copied.
void ShowLines(const QStringList& lines, QWidget* parent) {
  QDialog dialog(parent);
  Named(&dialog, "Troubles");
  dialog.setWindowTitle(kProgramTitle);
  auto* const text = Named(new QPlainTextEdit(lines.join("\n")), "TroubleLines");
  text->setReadOnly(true);
  text->setLineWrapMode(QPlainTextEdit::NoWrap);
  auto* const rows = new QVBoxLayout(&dialog);
  rows->addWidget(text);
  Explain(dialog);
  dialog.resize(800, 300);
  dialog.exec();
}

// Calls back when its label is clicked.
class ClickFilter : public QObject {
 public:
  ClickFilter(QLabel* label, std::function<void()> clicked)
      : QObject(label), clicked_(std::move(clicked)) {
    label->installEventFilter(this);
    label->setCursor(Qt::PointingHandCursor);
  }
  bool eventFilter(QObject* /*label*/, QEvent* event) override {
    if (event->type() != QEvent::MouseButtonRelease) return false;
    clicked_();
    return true;
  }

 private:
  std::function<void()> clicked_;
};

}  // namespace

StatusPanels::StatusPanels(QStatusBar& bar)
    : PanelOld(Panel("PanelOld")),
      PanelNew(Panel("PanelNew")),
      PanelPreview(LongPanel("PanelPreview")),
      PanelPairs(Panel("PanelPairs")),
      PanelTrouble(LongPanel("PanelTrouble")) {
  bar.addWidget(PanelOld);
  bar.addWidget(PanelNew);
  bar.addWidget(PanelPreview, 1);
  PanelPairs->hide();
  bar.addWidget(PanelPairs);
  PanelTrouble->hide();
  bar.addWidget(PanelTrouble, 1);
  new ClickFilter(PanelTrouble, [this] {
    ShowLines(refusal_.isEmpty() ? troubles_ : QStringList(refusal_), PanelTrouble->window());
  });
}

void StatusPanels::ShowCount(Side side, size_t selected, int files) {
  const bool is_old = side == Side::kOld;
  (is_old ? PanelOld : PanelNew)
      ->setText(QString(" %1 %2/%3 ").arg(is_old ? "Old" : "New").arg(selected).arg(files));
}

void StatusPanels::ShowPreview(const QString& preview) {
  PanelPreview->setText(preview);
  PanelPreview->setToolTip(preview.trimmed());
}

void StatusPanels::ShowTrouble(const std::string& line) {
  troubles_.append(ToQString(line));
  RenewTrouble();
}

void StatusPanels::HideTrouble() {
  troubles_.clear();
  HideRefusal();
}

void StatusPanels::ShowRefusal(const std::string& line) {
  refusal_ = ToQString(line);
  RenewTrouble();
}

void StatusPanels::HideRefusal() {
  refusal_.clear();
  RenewTrouble();
}

void StatusPanels::RenewTrouble() {
  constexpr qsizetype kLinesInToolTip = 20;
  const QStringList lines = refusal_.isEmpty() ? troubles_ : QStringList(refusal_);
  PanelTrouble->setVisible(!lines.isEmpty());
  if (lines.isEmpty()) return;
  const qsizetype more = lines.size() - 1;
  PanelTrouble->setText("⚠ " + lines.first() +
                        (more > 0 ? QString("（ほか %1 件）").arg(more) : QString()));
  PanelTrouble->setToolTip(lines.mid(0, kLinesInToolTip).join("\n"));
}

void StatusPanels::ShowPairs(const QString& text) {
  PanelPairs->setText(text);
  PanelPairs->setToolTip(text);
  PanelPairs->setVisible(!text.isEmpty());
}

}  // namespace ledrix
