// Opening, copying and deleting files for the user, with the questions that this takes.
#pragma once

#include <functional>
#include <string>
#include <vector>

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
  // The same, with something else in place of the message.
  void Open(const NativePath& path, const std::function<void()>& without_program);
  struct CopyPaths {
    NativePath from;
    NativePath to;
  };
  // Asks once before files are replaced, and tells which copies failed. Events act while they are
  // made, the mouse and the keys wait. False when the user wants none.
  bool Copy(const std::vector<CopyPaths>& files);
  // Asks once, and moves the files to the trash. False when the user does not want it, or no file
  // is there.
  bool Delete(std::vector<NativePath> paths);

  // True inside Copy, which uses this until it returns.
  bool is_copying() const { return copying_; }

 private:
  bool Ask(const std::string& question, bool yes_by_default);

  WindowPlatform& platform_;
  DesktopActions& actions_;
  bool copying_ = false;
};

}  // namespace ledrix
