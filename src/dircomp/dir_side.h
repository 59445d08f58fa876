// One side of a directory compare: the entries of a tree or of a directory information file, with
// the keys that pair them.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "dircomp/dir_entry.h"
#include "dircomp/qsort.h"
#include "platform/files.h"
#include "run/run_services.h"
#include "text/name_pattern.h"
#include "text/text_arena.h"

namespace ledrix::modDComp {

// What tells names apart whose keys hold "?" for something else. A directory information file holds
// no more than the "?".
enum class ReplacedNames { kPair, kStayApart };

// How keys are made.
struct KeyRules {
  CompareRange range;
  bool ignore_case;
  bool full_width;  // half-width forms count as full-width ones
  ReplacedNames replaced;
};

// What a side is read by, and who is told meanwhile.
struct Expansion {
  KeyRules rules;
  std::string_view type_filter;    // "*.*", or patterns joined by ";" in which letter case counts
  std::optional<FileInfo> output;  // a file that is no entry
  const FileSet* no_entries;       // and others, or nullptr
  GoOn go_on;                      // asked now and then; the reading ends when it says no
  std::function<void(const NativePath&)> file_gone;
};

// Texts are Shift_JIS bytes that the side keeps.
struct DirEntry {
  // Where names stay apart, a key that holds "?" for something else is followed by a zero byte and
  // the name's own characters in UTF-8, folded as the key is: they decide after equal keys.
  std::string_view key;
  std::string_view path;  // as listings show it
  int64_t modified = 0;   // local time in civil seconds
  uint64_t size = 0;      // bytes
};

class DirSide {
 public:
  // `path` is a directory information file when its file name matches `info_pattern`, otherwise a
  // folder that ends in a separator. Listings and keys call it `shown`.
  DirSide(NativePath path, NativePath shown, std::string_view info_pattern);

  const NativePath& path() const { return path_; }
  const NativePath& shown() const { return shown_path_; }
  bool is_info_file() const { return is_info_file_; }
  const std::string& display_root() const { return display_root_; }
  const std::vector<DirEntry>& entries() const { return entries_; }

  // Opens a directory information file; nothing is opened for a folder.
  Status Open();

  // Reads every entry whose name passes the type filter. Returns what went wrong, as a line for
  // stderr; an empty file is no directory information file. REQUIRES: Open() succeeded.
  std::optional<std::string> Expand(const Expansion& expansion);

  // True when "?" stands for what Shift_JIS lacks in the path of an entry of this side, or in the
  // name of its root.
  bool IsReplaced(const DirEntry& entry) const { return replaced_.contains(entry.path.data()); }
  bool IsRootReplaced() const;

  // Sorts the entries by key, unless `go_on` says no meanwhile.
  void SortByKey(const GoOn& go_on);

  // What a witness is told of the side; once it is read and sorted.
  EntriesNote Note() const;

 private:
  std::optional<std::string> ExpandFile(const Expansion& expansion);
  std::optional<std::string> ExpandTree(const Expansion& expansion);
  void Add(const FileRecord& record, const ExactName& exact, const KeyRules& rules);
  bool MakeKey(const FileRecord& record, const ExactName& exact, const KeyRules& rules);
  std::string ExactKey(const ExactName& exact, const KeyRules& rules) const;
  std::string_view Keep(std::string_view bytes);

  NativePath path_;
  NativePath shown_path_;
  bool is_info_file_;
  std::unique_ptr<Sha256> file_hash_ = std::make_unique<Sha256>();
  std::optional<InputFile> file_;
  std::string root_name_;
  bool root_differs_ = false;  // "?" stands for something in the root name
  std::string display_root_;
  std::optional<PatternList> type_filter_;  // nothing: every name passes
  std::vector<DirEntry> entries_;
  std::unordered_set<const char*> replaced_;  // paths of entries, by where they are kept
  TextArena texts_;
  // Texts of the entry that is being added; their memory serves the next one too.
  std::string key_;
  std::string shown_;
};

}  // namespace ledrix::modDComp
