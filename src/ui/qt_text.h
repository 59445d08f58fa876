// Texts and paths on their way between the program and Qt.
#pragma once

#include <QString>
#include <string>
#include <string_view>

#include "platform/native_path.h"

namespace ledrix {

inline QString ToQString(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

inline std::string ToUtf8(const QString& text) {
  return text.toStdString();
}

// How a path is shown; a name that is no valid UTF-8 cannot be made a path again from it.
inline QString ToQString(const NativePath& path) {
  return ToQString(PathToUtf8(path));
}

// A path that the user typed or that a Qt dialog gave.
inline NativePath ToNativePath(const QString& path) {
  return NativePath(ToUtf8(path));
}

// A text of several lines, separated by "\r", "\n" or "\r\n", as labels and boxes take it.
inline QString ToLines(std::string_view utf8) {
  QString lines = ToQString(utf8);
  lines.replace("\r\n", "\n");
  return lines.replace('\r', '\n');
}

// A menu caption that shows a text as it is: "&" would mark an access key.
inline QString ToCaption(QString text) {
  return text.replace('&', "&&");
}

// The same as ToLines for showing: of a text that no screen holds only the beginning and the end
// are left.
QString ToShownLines(std::string_view utf8);

}  // namespace ledrix
