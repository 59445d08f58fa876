#include "jobs/file_sides.h"

#include <algorithm>

#include "platform/files.h"
#include "settings/option_draft.h"
#include "text/ascii.h"
#include "text/utf8.h"

namespace ledrix {
namespace {

void Refuse(PlatformServices& platform, std::string text) {
  platform.ShowMessage({std::move(text)});
}

// The two blanks between the sides are ideographic spaces.
std::string MismatchText(Side side, const std::string& name, const char* missing) {
  const std::string old_text = side == Side::kOld ? name : missing;
  const std::string new_text = side == Side::kOld ? missing : name;
  return "旧ファイルと新ファイルが一致していません\r（旧） [ " + old_text + " ]　　（新） [ " +
         new_text + " ]";
}

bool IsSamePath(const NativePath& a, const NativePath& b) {
  if (FoldedName(a.bytes()) == FoldedName(b.bytes())) return true;
  const Result<FileInfo> info_a = GetFileInfo(a);
  const Result<FileInfo> info_b = GetFileInfo(b);
  return info_a.ok() && info_b.ok() && IsSameFile(info_a.value(), info_b.value());
}

}  // namespace

size_t SelectedCount(const FileList& list) {
  return static_cast<size_t>(
      std::count_if(list.entries.begin(), list.entries.end(),
                    [](const FileList::Entry& entry) { return entry.selected; }));
}

NativePath PathTextOf(const FileSide& side) {
  const NativePath folder = AddBackslash(side.folder);
  return SelectedCount(side.files) == 1 ? folder + SelectedFileName(side.files) : folder;
}

std::u32string FoldedName(std::string_view name) {
  std::u32string characters = Utf8Characters(name);
  std::transform(characters.begin(), characters.end(), characters.begin(), ToUpper);
  return characters;
}

NameIndex::NameIndex(const FileList& list) {
  for (size_t i = 0; i < list.entries.size(); ++i) {
    exact_.emplace(list.entries[i].name, i);
    folded_.emplace(FoldedName(list.entries[i].name), i);  // the first one stays
  }
}

size_t NameIndex::Find(const std::string& name) const {
  if (const auto found = exact_.find(name); found != exact_.end()) return found->second;
  const auto found = folded_.find(FoldedName(name));
  return found == folded_.end() ? std::string::npos : found->second;
}

bool CheckPairSelection(const FileSides& sides, PlatformServices& platform) {
  const size_t old_count = SelectedCount(sides[Side::kOld].files);
  const size_t new_count = SelectedCount(sides[Side::kNew].files);
  if (old_count == 0) {
    Refuse(platform, "旧ファイルが未設定です");
    return false;
  }
  if (new_count == 0) {
    Refuse(platform, "新ファイルが未設定です");
    return false;
  }
  if ((old_count != 1 || new_count != 1) && !CheckSameNames(sides, platform)) return false;
  const NativePath old_text = PathTextOf(sides[Side::kOld]);
  if (!IsSamePath(old_text, PathTextOf(sides[Side::kNew]))) return true;
  Refuse(platform, "旧ファイルと新ファイルが重複しています\r\n[ " + PathToUtf8(old_text) + " ]");
  return false;
}

bool CheckSameNames(const FileSides& sides, PlatformServices& platform) {
  for (const Side side : kBothSides) {
    const FileList& other = sides[OtherSide(side)].files;
    const NameIndex index(other);
    for (const FileList::Entry& entry : sides[side].files.entries) {
      if (!entry.selected) continue;
      const size_t found = index.Find(entry.name);
      if (found != std::string::npos && other.entries[found].selected) continue;
      const char* missing = found == std::string::npos ? "Nothing" : "No Select";
      Refuse(platform, MismatchText(side, PathToUtf8(NativePath(entry.name)), missing));
      return false;
    }
  }
  return true;
}

void SelectNamesakes(const FileList& from, FileList& to) {
  const NameIndex index(to);
  for (FileList::Entry& entry : to.entries) entry.selected = false;
  for (const FileList::Entry& entry : from.entries) {
    const size_t found = entry.selected ? index.Find(entry.name) : std::string::npos;
    if (found != std::string::npos) to.entries[found].selected = true;
  }
}

void SelectAllNamesakes(FileSides& sides) {
  FileList& new_files = sides[Side::kNew].files;
  const NameIndex index(new_files);
  for (FileList::Entry& entry : new_files.entries) entry.selected = false;
  const auto select = [&](FileList::Entry& entry, bool exact) {
    const size_t found = entry.selected ? std::string::npos : index.Find(entry.name);
    if (found == std::string::npos || new_files.entries[found].selected) return;
    if (exact && new_files.entries[found].name != entry.name) return;
    entry.selected = true;
    new_files.entries[found].selected = true;
  };
  for (FileList::Entry& entry : sides[Side::kOld].files.entries) entry.selected = false;
  // A new file has one partner, and the one of its own spelling comes first.
  for (const bool exact : {true, false}) {
    for (FileList::Entry& entry : sides[Side::kOld].files.entries) select(entry, exact);
  }
}

std::vector<std::string> FilterEntries(const OptionRecord& options, Side side) {
  std::vector<std::string> entries = {side == Side::kOld ? "旧ﾌｧｲﾙ (*.OLD;*.BAK)"
                                                         : "新ﾌｧｲﾙ (*.NEW)"};
  for (size_t k = 0; k < options.FPattern.size(); ++k) {
    std::string title(Trimmed(options.FPatternTtl[k]));
    const std::string pattern(Trimmed(options.FPattern[k]));
    if (title.empty() || pattern.empty()) continue;
    entries.push_back(title.append(" (").append(pattern).append(")"));
  }
  entries.push_back("ﾃﾞｨﾚｸﾄﾘ情報ﾌｧｲﾙ (" + options.ComboDLst + ")");
  entries.emplace_back("全て (*.*)");
  return entries;
}

std::string FilterPatterns(std::string_view entry) {
  const size_t open = entry.find('(');
  if (open == std::string_view::npos || open + 1 >= entry.size()) return {};
  return std::string(entry.substr(open + 1, entry.size() - open - 2));
}

}  // namespace ledrix
