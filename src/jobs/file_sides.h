// The two sides of the main window as plain data, and what is decided from them: which files pair,
// whether a compare may start, which patterns a filter stands for.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "jobs/output_names.h"
#include "run/run_services.h"

namespace ledrix {

struct FileSide {
  NativePath folder;         // ends in a separator
  std::string filter_entry;  // the shown entry of the file-type filter list
  FileList files;
};

using FileSides = PerSide<FileSide>;

size_t SelectedCount(const FileList& list);

// The folder, and behind it the selected file's name when exactly one is selected.
NativePath PathTextOf(const FileSide& side);

// A name in which letter case does not count.
std::u32string FoldedName(std::string_view name);

// Finds many names in one list without walking it for each: by exact spelling first, then the
// first one without regard to letter case.
class NameIndex {
 public:
  explicit NameIndex(const FileList& list);
  // The entry's index in the list, or npos.
  size_t Find(const std::string& name) const;

 private:
  std::map<std::string, size_t> exact_;
  std::map<std::u32string, size_t> folded_;
};

// True when a text compare of the selected files may start; otherwise tells the user why not.
bool CheckPairSelection(const FileSides& sides, PlatformServices& platform);

// True when every selected name of either side has a selected namesake on the other side;
// otherwise tells the user which has none.
bool CheckSameNames(const FileSides& sides, PlatformServices& platform);

// Selects in `to` the namesakes of what is selected in `from`, and nothing else.
void SelectNamesakes(const FileList& from, FileList& to);
// Selects every old entry that has a namesake of its own on the new side, and that namesake, and
// nothing else.
void SelectAllNamesakes(FileSides& sides);

// The entries of a side's file-type filter list.
std::vector<std::string> FilterEntries(const OptionRecord& options, Side side);
// The patterns of an entry, joined by ";": its text behind its first "(" without its last
// character.
std::string FilterPatterns(std::string_view entry);

}  // namespace ledrix
