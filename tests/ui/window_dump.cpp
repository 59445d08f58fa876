#include "ui/window_dump.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QAccessible>
#include <QComboBox>
#include <QLayout>
#include <QMenuBar>
#include <QSplitter>
#include <QTabWidget>

#include "settings/help_texts.h"
#include "ui/qt_text.h"

namespace ledrix::test {
namespace {

using Widgets = QList<const QWidget*>;

void AddLaidOut(const QLayout* layout, Widgets& widgets) {
  for (int i = 0; layout != nullptr && i < layout->count(); ++i) {
    QLayoutItem* const item = layout->itemAt(i);
    if (item->widget() != nullptr) widgets += item->widget();
    AddLaidOut(item->layout(), widgets);
  }
}

// Without what Qt makes for itself.
Widgets Children(const QWidget& widget) {
  Widgets children;
  if (widget.inherits("QAbstractItemView") || widget.inherits("QComboBox")) return children;
  if (const auto* const tabs = dynamic_cast<const QTabWidget*>(&widget)) {
    for (int i = 0; i < tabs->count(); ++i) children += tabs->widget(i);
    return children;
  }
  if (const auto* const panes = dynamic_cast<const QSplitter*>(&widget)) {
    for (int i = 0; i < panes->count(); ++i) children += panes->widget(i);
  }
  AddLaidOut(widget.layout(), children);
  for (const auto* const child : widget.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
    const bool own = !child->objectName().startsWith("qt_") && !child->inherits("QMenu");
    if (own && !children.contains(child)) children += child;
  }
  return children;
}

// The texts of what a control lists: its items, headings or tabs.
QStringList ListedBy(const QWidget& widget) {
  QStringList texts;
  const auto* const combo = dynamic_cast<const QComboBox*>(&widget);
  const bool same_everywhere = !widget.objectName().startsWith("inDrive");
  for (int i = 0; combo != nullptr && same_everywhere && i < combo->count(); ++i) {
    texts += combo->itemText(i);
  }
  const auto* const view = dynamic_cast<const QAbstractItemView*>(&widget);
  for (int i = 0; view != nullptr && i < view->model()->columnCount(); ++i) {
    texts += view->model()->headerData(i, Qt::Horizontal).toString();
  }
  const auto* const tabs = dynamic_cast<const QTabWidget*>(&widget);
  for (int i = 0; tabs != nullptr && i < tabs->count(); ++i) texts += tabs->tabText(i);
  return texts;
}

QString TextOf(const QWidget& widget) {
  QString text = widget.isWindow() ? widget.windowTitle() : QString();
  for (const char* const property : {"text", "title"}) text += widget.property(property).toString();
  if (const QStringList listed = ListedBy(widget); !listed.isEmpty()) {
    text += widget.property("currentText").toString() + " of " + listed.join('|');
  }
  text.replace('\r', "\\r").replace('\n', "\\n");
  return text;
}

void AddActions(const QList<QAction*>& actions, const QAction* standard, const QString& indent,
                QString& dump) {
  bool line_waits = false;  // lines at the ends and beside each other are not drawn
  for (const QAction* const action : actions) {
    if (!action->isVisible()) continue;
    if (action->isSeparator()) {
      line_waits = action != actions.front();
      continue;
    }
    if (std::exchange(line_waits, false)) dump += indent + "-\n";
    const QMenu* const menu = action->menu();
    const QString name = menu != nullptr ? menu->objectName() : action->objectName();
    EXPECT_TRUE(name.isEmpty() || ControlHelp("", ToUtf8(name)) != nullptr) << ToUtf8(name);
    dump += indent + name + " \"" + action->text() + '"' +
            (action->isEnabled() ? "" : " disabled") + (action->isChecked() ? " checked" : "") +
            (action == standard ? " default" : "") + '\n';
    if (menu != nullptr) AddActions(menu->actions(), menu->defaultAction(), indent + "  ", dump);
  }
}

// Its tool tip, and what a screen reader calls it; what takes the focus must have both.
QString SaidOf(const QWidget& widget) {
  const bool is_ours = !widget.objectName().isEmpty() && !widget.objectName().startsWith("qt_");
  QString tip = widget.toolTip().replace('\n', "\\n");
  if (!is_ours || widget.focusPolicy() == Qt::NoFocus) {
    return tip.isEmpty() ? tip : " tip \"" + tip + '"';
  }
  const QString name =
      QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&widget))->text(QAccessible::Name);
  EXPECT_FALSE(name.isEmpty() || tip.isEmpty()) << widget.objectName().toStdString();
  return " called \"" + name + "\" tip \"" + tip + '"';
}

void AddWidget(const QWidget& widget, QString indent, QString& dump) {
  const QString text = TextOf(widget);
  if (!widget.objectName().isEmpty() || !text.isEmpty()) {
    dump += indent + widget.metaObject()->className() + ' ' + widget.objectName() + " \"" + text +
            '"' + SaidOf(widget) + (widget.isEnabled() ? "" : " disabled") +
            (widget.isHidden() ? " hidden" : "");
    for (const char* const state : {"checked", "default"}) {
      if (widget.property(state).toBool()) dump += QString(" ") + state;
    }
    dump += '\n';
    indent += "  ";
  }
  if (const auto* const bar = dynamic_cast<const QMenuBar*>(&widget)) {
    return AddActions(bar->actions(), nullptr, indent, dump);
  }
  for (const QWidget* const child : Children(widget)) AddWidget(*child, indent, dump);
}

}  // namespace

std::string DumpWindow(const QWidget& window) {
  QString dump;
  AddWidget(window, {}, dump);
  return ToUtf8(dump);
}

std::string DumpMenu(const QMenu& menu) {
  QString dump;
  AddActions(menu.actions(), menu.defaultAction(), {}, dump);
  return ToUtf8(dump);
}

}  // namespace ledrix::test
