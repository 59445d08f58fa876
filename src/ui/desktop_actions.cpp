#include "ui/desktop_actions.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QFile>
#include <QGuiApplication>
#include <QMimeDatabase>
#include <QStandardPaths>
#include <QUrl>

#include "platform/files.h"
#include "text/utf8.h"
#include "ui/qt_text.h"

namespace ledrix {
namespace {

constexpr size_t kBytesToTellTheType = 16384;

bool IsUtf8(const NativePath& path) {
  const std::string& bytes = path.bytes();
  for (size_t i = 0; i < bytes.size();) {
    const Utf8Char character = DecodeUtf8(bytes, i);
    if (!character.valid) return false;
    i += character.size;
  }
  return true;
}

// A path as Qt takes it, control characters and all. REQUIRES: IsUtf8(path).
QString WholePath(const NativePath& path) {
  return ToQString(path.bytes());
}

// The type of a file by its name and its first bytes, then the types that it is a kind of.
std::vector<std::string> MimeTypes(const NativePath& path, const QByteArray& start) {
  const QMimeType type =
      QMimeDatabase().mimeTypeForFileNameAndData(ToQString(FileNameOf(path)), start);
  std::vector<std::string> names{ToUtf8(type.name())};
  for (const QString& ancestor : type.allAncestors()) names.push_back(ToUtf8(ancestor));
  return names;
}

}  // namespace

DesktopActions::OpenResult DesktopActions::OpenFile(const NativePath& path) {
  // A pipe is not waited for.
  const Result<FileInfo> info = GetFileInfo(path);
  if (!info.ok() || info.value().kind != FileKind::kRegular) return OpenResult::kFailed;
  Result<InputFile> file = InputFile::OpenRegular(path);
  if (!file.ok()) return OpenResult::kFailed;
  QByteArray start(kBytesToTellTheType, '\0');
  const Result<size_t> size = file.value().Read(start.data(), kBytesToTellTheType);
  if (!size.ok()) return OpenResult::kFailed;
  start.truncate(static_cast<qsizetype>(size.value()));

  const std::optional<Launcher> launcher = FindAssociation(Associations(), MimeTypes(path, start));
  if (!launcher) return OpenResult::kNoAssociation;
  // Without a desktop there is nobody to say that it could not be opened.
  const bool asks_desktop = !qEnvironmentVariableIsEmpty("XDG_CURRENT_DESKTOP");
  const bool is_open = (asks_desktop && OpenByDesktop(path)) || StartLauncher(*launcher, path) ||
                       (!asks_desktop && OpenByDesktop(path));
  return is_open ? OpenResult::kOpened : OpenResult::kFailed;
}

bool DesktopActions::OpenFolder(const NativePath& folder) {
  if (!IsFolder(folder)) return false;
  if (OpenByDesktop(folder)) return true;
  const std::optional<Launcher> launcher = FindAssociation(Associations(), {"inode/directory"});
  return launcher && StartLauncher(*launcher, folder);
}

bool DesktopActions::OpenByDesktop(const NativePath& path) {
  return IsUtf8(path) && OpenUrl(QUrl::fromLocalFile(WholePath(MakeAbsolute(path))));
}

bool DesktopActions::OpenAddress(const QString& address) {
  const QUrl url(address);
  if (OpenUrl(url)) return true;
  const std::optional<Launcher> launcher =
      FindAssociation(Associations(), {"x-scheme-handler/" + ToUtf8(url.scheme())});
  return launcher && StartWithAddress(*launcher, ToUtf8(address)).ok();
}

bool DesktopActions::OpenUrl(const QUrl& url) {
  return QDesktopServices::openUrl(url);
}

bool DesktopActions::MoveToTrash(const NativePath& path) {
  return IsUtf8(path) && QFile::moveToTrash(WholePath(path));
}

bool DesktopActions::StartLauncher(const Launcher& launcher, const NativePath& file) {
  return StartWithFile(launcher, MakeAbsolute(file)).ok();
}

NativePath DesktopActions::DocumentsFolder() {
  return AddBackslash(
      ToNativePath(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)));
}

void DesktopActions::SetClipboardText(const QString& text) {
  QGuiApplication::clipboard()->setText(text);
}

}  // namespace ledrix
