#include "dircomp/tree_walk.h"

#include "platform/local_time.h"

namespace ledrix::modDComp {
namespace {

bool IsBelow(const std::string& path, const std::string& folder) {
  return path == folder || (path.size() > folder.size() && path.rfind(folder, 0) == 0 &&
                            (folder.back() == '/' || path[folder.size()] == '/'));
}

// A folder that is being walked.
struct WalkedFolder {
  NativePath path;   // ends in a separator
  std::string text;  // relative to the root, as it is written; begins and ends with "\"
  bool text_differs = false;
  bool behind_link = false;
};

class Walk {
 public:
  Walk(const NativePath& root, const TreeVisitor& visitor) : root_(root), visitor_(visitor) {}

  std::optional<WalkError> Run() {
    const Result<NativePath> real_root = ResolveFolder(root_);
    if (!real_root.ok()) return WalkError{root_, real_root.error()};
    real_root_ = real_root.value().bytes();
    VisitFolder({root_, "\\"});
    return error_;
  }

 private:
  void VisitFolder(const WalkedFolder& folder) {
    if (!visitor_.enter_folder()) return;
    const Result<std::vector<FolderEntry>> entries =
        ReadFolder(folder.path, visitor_.read_entry,
                   [&](const LostEntry& lost) { return TakeLost(folder, lost); });
    if (!entries.ok()) {
      Fail(folder.path, entries.error());
      return;
    }
    for (const FolderEntry& entry : entries.value()) {
      if (entry.info.kind == FileKind::kFolder) {
        VisitSubfolder(folder, entry);
      } else if (entry.info.kind == FileKind::kRegular) {
        VisitFile(folder, entry);
      }
      if (error_) return;
    }
    visitor_.leave_folder();
  }

  BadEntry TakeLost(const WalkedFolder& folder, const LostEntry& lost) {
    const NativePath path = folder.path + lost.name;
    if (!lost.IsGoneFile()) {
      Fail(path, lost.error);
      return BadEntry::kEndsReading;
    }
    visitor_.file_gone(path);
    return BadEntry::kIsLeftOut;
  }

  void VisitFile(const WalkedFolder& folder, const FolderEntry& entry) {
    if (visitor_.output && IsSameFile(*visitor_.output, entry.info)) return;
    if (visitor_.no_entries != nullptr && visitor_.no_entries->Holds(entry.info)) return;
    const FileRecord record{folder.text, NameText(entry.name),
                            CivilSeconds(ToLocalTime(entry.info.modified)), entry.info.size};
    const std::string_view below_root =
        std::string_view(folder.path.bytes()).substr(root_.bytes().size());
    visitor_.visit_file(record,
                        {below_root, entry.name, folder.text_differs, record.name != entry.name});
  }

  void VisitSubfolder(const WalkedFolder& folder, const FolderEntry& entry) {
    const std::string name = NameText(entry.name);
    const WalkedFolder subfolder{folder.path + entry.name + "/", folder.text + name + "\\",
                                 folder.text_differs || name != entry.name,
                                 folder.behind_link || entry.is_link};
    if (entry.is_link && !MayFollow(subfolder.path)) return;
    const bool is_new =
        !subfolder.behind_link || reached_.insert({entry.info.device, entry.info.inode}).second;
    if (is_new) VisitFolder(subfolder);
  }

  bool MayFollow(const NativePath& link) {
    const Result<NativePath> target = ResolveFolder(link);
    if (!target.ok()) {
      Fail(link, target.error());
      return false;
    }
    const std::string& real = target.value().bytes();
    return !IsBelow(real, real_root_) && !IsBelow(real_root_, real);
  }

  // The first failure, which knows the place best, counts.
  void Fail(const NativePath& path, const Error& error) {
    if (!error_) error_ = WalkError{path, error};
  }

  const NativePath& root_;
  std::string real_root_;
  const TreeVisitor& visitor_;
  std::set<std::pair<dev_t, ino_t>> reached_;  // folders walked behind links
  std::optional<WalkError> error_;
};

}  // namespace

std::optional<WalkError> WalkTree(const NativePath& root, const TreeVisitor& visitor) {
  return Walk(root, visitor).Run();
}

std::string FileGoneText(const NativePath& path) {
  return PathToUtf8(path) + ": 一覧の後に無くなったため除きました";
}

}  // namespace ledrix::modDComp
