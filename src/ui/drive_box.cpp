#include "ui/drive_box.h"

#include "platform/folders.h"
#include "ui/drives.h"
#include "ui/qt_text.h"

namespace ledrix {

DriveBox::DriveBox(PlatformServices& platform, std::function<void(const NativePath&)> open)
    : platform_(platform), open_(std::move(open)) {
  connect(this, &QComboBox::activated, this, [this](int index) { Choose(index); });
}

void DriveBox::Fill() {
  drives_ = ListDrives();
  const QSignalBlocker quiet(this);
  clear();
  for (const NativePath& drive : drives_) addItem(ToQString(drive));
  ShowDriveOf(folder_);
}

void DriveBox::ShowDriveOf(const NativePath& folder) {
  folder_ = folder;
  const int drive = DriveOf(drives_, folder);
  setCurrentIndex(drive);
  if (drive >= 0) last_folders_[drives_[static_cast<size_t>(drive)].bytes()] = folder;
}

void DriveBox::Choose(int index) {
  if (index < 0 || index >= static_cast<int>(drives_.size())) return;
  const NativePath drive = drives_[static_cast<size_t>(index)];
  if (!ReadFolder(
           drive, [] {}, BadEntry::kIsLeftOut)
           .ok()) {
    platform_.ShowMessage({PathToUtf8(StripBackslash(drive)) +
                           " にアクセスできません  デバイスの準備ができていません"});
    ShowDriveOf(folder_);
    return;
  }
  const auto last = last_folders_.find(drive.bytes());
  open_(last == last_folders_.end() ? drive : last->second);
}

}  // namespace ledrix
