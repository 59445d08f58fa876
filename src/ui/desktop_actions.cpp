#include "ui/desktop_actions.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QFile>
#include <QGuiApplication>
#include <QStandardPaths>
#include <QUrl>

#include "ui/qt_text.h"

namespace ledrix {
namespace {

QUrl UrlOf(const NativePath& path) {
  return QUrl::fromLocalFile(ToQString(path.bytes()));
}

}  // namespace

DesktopActions::OpenResult DesktopActions::OpenFile(const NativePath& path) {
  return QDesktopServices::openUrl(UrlOf(path)) ? OpenResult::kOpened : OpenResult::kNoAssociation;
}

bool DesktopActions::OpenFolder(const NativePath& folder) {
  return QDesktopServices::openUrl(UrlOf(folder));
}

bool DesktopActions::OpenAddress(const QString& address) {
  return QDesktopServices::openUrl(QUrl(address));
}

bool DesktopActions::MoveToTrash(const NativePath& path) {
  return QFile::moveToTrash(ToQString(path.bytes()));
}

NativePath DesktopActions::DocumentsFolder() {
  return ToNativePath(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
}

void DesktopActions::SetClipboardText(const QString& text) {
  QGuiApplication::clipboard()->setText(text);
}

}  // namespace ledrix
