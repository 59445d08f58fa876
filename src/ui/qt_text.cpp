#include "ui/qt_text.h"

namespace ledrix {

QString ToShownLines(std::string_view utf8) {
  constexpr qsizetype kMost = 1200;
  constexpr qsizetype kEnd = 300;
  QString lines = ToLines(utf8);
  if (lines.size() <= kMost) return lines;
  return lines.left(kMost - kEnd) + " …… " + lines.right(kEnd);
}

}  // namespace ledrix
