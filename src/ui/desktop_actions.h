// What the main window asks of the desktop.
#pragma once

#include <QString>

#include "desktop/associations.h"
#include "desktop/launcher.h"
#include "platform/native_path.h"

class QUrl;

namespace ledrix {

// Tests replace it by one that records. Nothing is ever handed to a shell, and paths reach the
// programs byte for byte, valid UTF-8 or not. REQUIRES: an application object exists while it is
// used, on whose thread it is.
class DesktopActions {
 public:
  enum class OpenResult {
    kOpened,
    kNoAssociation,  // the desktop knows no program for files of this kind
    kFailed,         // the file cannot be read, or its program did not start
  };

  DesktopActions() = default;
  DesktopActions(const DesktopActions&) = delete;
  DesktopActions& operator=(const DesktopActions&) = delete;
  virtual ~DesktopActions() = default;

  // By the program that is associated with the file.
  virtual OpenResult OpenFile(const NativePath& path);
  // In the file manager.
  virtual bool OpenFolder(const NativePath& folder);
  // A web page.
  virtual bool OpenAddress(const QString& address);
  // Never deletes for good; false when the trash refuses, as it does a path that is no UTF-8.
  virtual bool MoveToTrash(const NativePath& path);
  virtual bool StartLauncher(const Launcher& launcher, const NativePath& file);
  // With a separator at its end.
  virtual NativePath DocumentsFolder();
  virtual void SetClipboardText(const QString& text);

 protected:
  // Lets the desktop open an address; false when it does not. Tests answer for the desktop.
  virtual bool OpenUrl(const QUrl& url);
  virtual AssociationFolders Associations() { return DesktopAssociationFolders(); }

 private:
  // False for a path that is no UTF-8: as an address of Qt's it would be another one.
  bool OpenByDesktop(const NativePath& path);
};

}  // namespace ledrix
