#include "ui/drives.h"

#include <QByteArray>
#include <QDir>
#include <QFileInfo>
#include <QStorageInfo>
#include <algorithm>
#include <iterator>

#include "ui/qt_text.h"

namespace ledrix {
namespace {

bool IsVirtual(const QByteArray& type) {
  static constexpr const char* kTypes[] = {
      "autofs",     "binfmt_misc", "bpf",      "cgroup",   "cgroup2", "configfs",
      "debugfs",    "devpts",      "devtmpfs", "efivarfs", "fusectl", "hugetlbfs",
      "mqueue",     "nsfs",        "overlay",  "proc",     "pstore",  "ramfs",
      "rpc_pipefs", "securityfs",  "squashfs", "sysfs",    "tmpfs",   "tracefs"};
  return std::any_of(std::begin(kTypes), std::end(kTypes),
                     [&](const char* each) { return type == each; }) ||
         type.startsWith("fuse.gvfsd") || type.startsWith("fuse.portal");
}

}  // namespace

std::vector<NativePath> ListDrives() {
  std::vector<NativePath> drives = {NativePath("/")};
  const auto add = [&drives](const QString& path) {
    NativePath root = AddBackslash(ToNativePath(path));
    if (std::find(drives.begin(), drives.end(), root) == drives.end()) {
      drives.push_back(std::move(root));
    }
  };
  add(QDir::homePath());
  for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
    if (!volume.isValid() || !volume.isReady() || IsVirtual(volume.fileSystemType())) continue;
    if (QFileInfo(volume.rootPath()).isDir()) add(volume.rootPath());
  }
  std::sort(drives.begin() + 1, drives.end(),
            [](const NativePath& a, const NativePath& b) { return a.bytes() < b.bytes(); });
  return drives;
}

int DriveOf(const std::vector<NativePath>& drives, const NativePath& folder) {
  int found = -1;
  size_t longest = 0;
  for (size_t i = 0; i < drives.size(); ++i) {
    const std::string& root = drives[i].bytes();
    if (root.size() <= longest || folder.bytes().rfind(root, 0) != 0) continue;
    longest = root.size();
    found = static_cast<int>(i);
  }
  return found;
}

}  // namespace ledrix
