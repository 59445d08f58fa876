#include "dircomp/tree_walk.h"

#include "platform/local_time.h"

namespace ledrix::modDComp {
namespace {

bool IsBelow(const std::string& path, const std::string& folder) {
  return path == folder || (path.size() > folder.size() && path.rfind(folder, 0) == 0 &&
                            (folder.back() == '/' || path[folder.size()] == '/'));
}

class Walk {
 public:
  Walk(const NativePath& root, const TreeVisitor& visitor)
      : root_(root), real_root_(RealPath(root).bytes()), visitor_(visitor) {}

  std::optional<WalkError> Run() {
    VisitFolder(root_, "\\", false);
    return error_;
  }

 private:
  void VisitFolder(const NativePath& path, const std::string& folder, bool behind_link) {
    if (!visitor_.enter_folder()) return;
    const Result<std::vector<FolderEntry>> entries = ReadFolder(path, visitor_.read_entry);
    if (!entries.ok()) {
      error_ = WalkError{path, entries.error()};
      return;
    }
    for (const FolderEntry& entry : entries.value()) {
      if (entry.info.kind == FileKind::kFolder) {
        VisitSubfolder(path, folder, entry, behind_link);
      } else if (entry.info.kind == FileKind::kRegular) {
        visitor_.visit_file({folder, NameText(entry.name),
                             CivilSeconds(ToLocalTime(entry.info.modified)), entry.info.size});
      }
      if (error_) return;
    }
    visitor_.leave_folder();
  }

  void VisitSubfolder(const NativePath& path, const std::string& folder, const FolderEntry& entry,
                      bool behind_link) {
    const NativePath subfolder = path + entry.name + "/";
    if (entry.is_link && !MayFollow(subfolder)) return;
    const bool linked = behind_link || entry.is_link;
    const bool is_new = !linked || reached_.insert({entry.info.device, entry.info.inode}).second;
    if (is_new) VisitFolder(subfolder, folder + NameText(entry.name) + "\\", linked);
  }

  bool MayFollow(const NativePath& link) const {
    const std::string target = RealPath(link).bytes();
    return !target.empty() && !IsBelow(target, real_root_) && !IsBelow(real_root_, target);
  }

  const NativePath& root_;
  const std::string real_root_;
  const TreeVisitor& visitor_;
  std::set<std::pair<dev_t, ino_t>> reached_;  // folders walked behind links
  std::optional<WalkError> error_;
};

}  // namespace

std::optional<WalkError> WalkTree(const NativePath& root, const TreeVisitor& visitor) {
  return Walk(root, visitor).Run();
}

}  // namespace ledrix::modDComp
