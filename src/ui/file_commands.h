// Opening, copying and deleting one file for the user, with the questions that this takes.
#pragma once

#include "platform/native_path.h"

namespace ledrix {

class DesktopActions;
class WindowPlatform;

class FileCommands {
 public:
  // Both must outlive this.
  FileCommands(WindowPlatform& platform, DesktopActions& actions)
      : platform_(platform), actions_(actions) {}

  // By the program that is associated with it; a message tells when there is none. A path that is
  // empty or leads nowhere is passed over, here and in Delete.
  void Open(const NativePath& path);
  // Asks before a file is replaced, and tells when the copy fails. Events act while it is made, the
  // mouse and the keys wait. False when the user wants none.
  bool Copy(const NativePath& from, const NativePath& to);
  // Asks, and moves the file to the trash. False when the user does not want it, or no file is
  // there.
  bool Delete(const NativePath& path);

  // True inside Copy, which uses this until it returns.
  bool is_copying() const { return copying_; }

 private:
  WindowPlatform& platform_;
  DesktopActions& actions_;
  bool copying_ = false;
};

}  // namespace ledrix
