// What the main window asks of the desktop.
#pragma once

#include <QString>

#include "platform/native_path.h"

namespace ledrix {

// Tests replace it by one that records.
class DesktopActions {
 public:
  enum class OpenResult { kOpened, kNoAssociation, kFailed };

  DesktopActions() = default;
  DesktopActions(const DesktopActions&) = delete;
  DesktopActions& operator=(const DesktopActions&) = delete;
  virtual ~DesktopActions() = default;

  // By the program that is associated with the file.
  virtual OpenResult OpenFile(const NativePath& path);
  // In the file manager.
  virtual bool OpenFolder(const NativePath& folder);
  virtual bool OpenAddress(const QString& address);
  // Never deletes for good; false when the trash refuses.
  virtual bool MoveToTrash(const NativePath& path);
  virtual NativePath DocumentsFolder();
  virtual void SetClipboardText(const QString& text);
};

}  // namespace ledrix
