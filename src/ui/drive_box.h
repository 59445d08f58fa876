// A side's list of drives.
#pragma once

#include <QComboBox>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/native_path.h"
#include "platform/services.h"

namespace ledrix {

class DriveBox : public QComboBox {
 public:
  // `open` is called with a folder of the drive that the user chose: the one last open there.
  // `platform` must outlive the box.
  DriveBox(PlatformServices& platform, std::function<void(const NativePath& folder)> open);

  // Reads the drives anew.
  void Fill();
  // Selects the drive of the open folder.
  void ShowDriveOf(const NativePath& folder);

 private:
  void Choose(int index);

  PlatformServices& platform_;
  const std::function<void(const NativePath&)> open_;
  NativePath folder_;  // the open one
  std::vector<NativePath> drives_;
  std::map<std::string, NativePath> last_folders_;  // the folder last open on each drive
};

}  // namespace ledrix
