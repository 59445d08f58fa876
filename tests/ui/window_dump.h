// What a window shows, as text that is compared with a recorded one.
#pragma once

#include <QMenu>
#include <QWidget>
#include <string>

namespace ledrix::test {

// A line for each control that has a name or a text, those inside it indented below it, in the
// order in which they are laid out: kind, name, texts, what the mouse is told, state.
std::string DumpWindow(const QWidget& window);

// A line for each visible entry of a menu, submenus indented below theirs.
std::string DumpMenu(const QMenu& menu);

}  // namespace ledrix::test
