// One side of a directory compare: the entries of a tree or of a directory information file, with
// the keys that pair them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dircomp/dir_entry.h"
#include "dircomp/qsort.h"
#include "platform/files.h"
#include "run/run_services.h"
#include "text/name_pattern.h"
#include "text/text_arena.h"

namespace ledrix::modDComp {

// How keys are made.
struct KeyRules {
  CompareRange range;
  bool ignore_case;
  bool full_width;  // half-width forms count as full-width ones
};

// Texts are Shift_JIS bytes that the side keeps.
struct DirEntry {
  std::string_view key;
  std::string_view path;  // as listings show it
  int64_t modified = 0;   // local time in civil seconds
  uint64_t size = 0;      // bytes
};

class DirSide {
 public:
  // `path` is a directory information file when its file name matches `info_pattern`, otherwise a
  // folder that ends in a separator.
  DirSide(NativePath path, std::string_view info_pattern);

  const NativePath& path() const { return path_; }
  bool is_info_file() const { return is_info_file_; }
  const std::string& display_root() const { return display_root_; }
  const std::vector<DirEntry>& entries() const { return entries_; }

  // Opens a directory information file; nothing is opened for a folder.
  Status Open();

  // Reads every entry whose name passes the type filter ("*.*", or patterns joined by ";" in which
  // letter case counts). Asks `go_on` now and then and ends when it says no. Returns what went
  // wrong, as a line for stderr. REQUIRES: Open() succeeded.
  std::optional<std::string> Expand(const KeyRules& rules, std::string_view type_filter,
                                    const GoOn& go_on);

  // Sorts the entries by key, unless `go_on` says no meanwhile.
  void SortByKey(const GoOn& go_on);

 private:
  std::optional<std::string> ExpandFile(const KeyRules& rules, const GoOn& go_on);
  std::optional<std::string> ExpandTree(const KeyRules& rules, const GoOn& go_on);
  void Add(const FileRecord& record, const KeyRules& rules);
  std::string_view Keep(std::string_view bytes);

  NativePath path_;
  bool is_info_file_;
  std::optional<InputFile> file_;
  std::string root_name_;
  std::string display_root_;
  std::optional<PatternList> type_filter_;  // nothing: every name passes
  std::vector<DirEntry> entries_;
  TextArena texts_;
  // Texts of the entry that is being added; their memory serves the next one too.
  std::string key_;
  std::string shown_;
};

// The text under the rules of half-width to full-width conversion: every half-width character
// becomes its full-width form, a katakana letter with a sound mark behind it one character.
std::u32string ToFullWidth(const std::u32string& text);

}  // namespace ledrix::modDComp
