#include "ui/explain.h"

#include <QComboBox>
#include <QLabel>
#include <QWidget>

#include "settings/help_texts.h"
#include "ui/qt_text.h"

namespace ledrix {
namespace {

// A line a sentence: a tip is not broken by itself.
QString Tip(const QString& hint, const HelpText& help) {
  QString tip = ToQString(help.text).replace("。", "。\n").trimmed();
  if (!help.keys.empty())
    tip += (tip.isEmpty() ? "" : "  ") + QString("[%1]").arg(ToQString(help.keys));
  return hint.isEmpty() ? tip : hint + "\n" + tip;
}

// The name of one control; the index of an array tells which side or number it is.
QString NameOf(const HelpText& help, const QString& control) {
  const QChar last = control.back();
  const int index = last.isDigit() ? last.digitValue() : 0;
  QString name = ToQString(help.name);
  name.replace("{side}", index == 0 ? "Old" : "New");
  return name.replace("{n}", QString::number(index + 1));
}

void Give(QWidget& control, const HelpText& help) {
  control.setToolTip(Tip(control.toolTip(), help));
  if (dynamic_cast<const QLabel*>(&control) != nullptr) return;  // is called by what it says
  const QString name = NameOf(help, control.objectName());
  control.setAccessibleName(name);
  // A combo box is called by what it shows.
  const bool is_combo = dynamic_cast<const QComboBox*>(&control) != nullptr;
  control.setAccessibleDescription((is_combo ? name + ": " : QString()) + ToQString(help.text));
}

const HelpText* HelpOf(const QWidget& window, const QString& control) {
  return ControlHelp(ToUtf8(window.objectName()), ToUtf8(control));
}

}  // namespace

void Explain(QWidget& window) {
  for (QWidget* const control : window.findChildren<QWidget*>()) {
    if (!control->accessibleName().isEmpty()) continue;
    const HelpText* const help = HelpOf(window, control->objectName());
    if (help != nullptr) Give(*control, *help);
  }
}

void ExplainOption(QWidget& control, OptionKey key) {
  Give(control, OptionHelp(key));
}

QString TipBelow(const QString& hint, const QWidget& window, const QString& control) {
  const HelpText* const help = HelpOf(window, control);
  return help == nullptr ? hint : Tip(hint, *help);
}

}  // namespace ledrix
