// The desktop's windows in which a user chooses a folder or a font. Without a desktop (the platform
// "offscreen") Qt's own are shown.
#pragma once

#include <QString>
#include <QWidget>
#include <optional>
#include <string>

namespace ledrix {

// The folder chosen, absolute; nothing when the window is left otherwise. A start folder that does
// not exist is replaced by the current one.
std::optional<QString> ChooseFolder(QWidget* parent, const QString& title, const QString& start);

struct FontChoice {
  std::string name;
  int size = 0;  // points, at least 1
};

// The font chosen; nothing when the window is left otherwise. The name stays the one given as long
// as no other font is chosen, even when another font stands in for it on this system.
std::optional<FontChoice> ChooseFont(QWidget* parent, const FontChoice& current);

}  // namespace ledrix
