#include "dircomp/dir_side.h"

#include <algorithm>
#include <cstring>

#include "dircomp/dir_info_file.h"
#include "dircomp/tree_walk.h"
#include "text/ascii.h"
#include "text/code_page_932.h"
#include "text/full_width.h"
#include "text/name_pattern.h"
#include "text/utf8.h"

namespace ledrix::modDComp {
namespace {

// A text with letter case and width folded as the rules say. Bytes that are no valid UTF-8 stay
// apart from every character.
std::string Fold(std::string_view text, const KeyRules& rules) {
  std::u32string characters = Utf8Characters(text);
  if (rules.ignore_case) {
    std::transform(characters.begin(), characters.end(), characters.begin(), ToUpper);
  }
  if (rules.full_width) characters = ToFullWidth(characters);
  std::string folded;
  for (const char32_t c : characters) AppendUtf8(folded, c);
  return folded;
}

// "?" is no part of a double-byte character, so they can be counted in both kinds of text.
std::ptrdiff_t QuestionMarks(std::string_view text) {
  return std::count(text.begin(), text.end(), '?');
}

// Makes a text Shift_JIS; true when "?" came in for something that Shift_JIS lacks.
bool EncodeInPlace(std::string& text) {
  const std::ptrdiff_t before = QuestionMarks(text);
  text = EncodeSjis(text).bytes();
  return QuestionMarks(text) > before;
}

// Turns a text that the range has chosen into a key; true when it holds "?" for something that
// Shift_JIS lacks.
bool TurnIntoKey(std::string& text, const KeyRules& rules) {
  if (IsAscii(text) && !rules.full_width) {
    if (rules.ignore_case) {
      for (char& c : text) c = AsciiUpper(c);
    }
    return false;
  }
  // What a directory information file holds of a name is folded, so that a tree pairs with its own.
  if (rules.replaced == ReplacedNames::kPair) text = DecodeSjis(EncodeSjis(text));
  text = Fold(text, rules);
  return EncodeInPlace(text);
}

}  // namespace

DirSide::DirSide(NativePath path, NativePath shown, std::string_view info_pattern)
    : path_(std::move(path)),
      shown_path_(std::move(shown)),
      is_info_file_(MatchesPattern(FileNameOf(path_), info_pattern, LetterCase::kIgnore)) {}

Status DirSide::Open() {
  if (!is_info_file_) return Status();
  Result<InputFile> file = InputFile::Open(path_);
  if (!file.ok()) return file.error();
  file_ = std::move(file.value());
  return Status();
}

bool DirSide::IsRootReplaced() const {
  return !is_info_file_ && HoldsLackingCharacter(shown_path_.bytes());
}

std::optional<std::string> DirSide::Expand(const Expansion& expansion) {
  if (expansion.type_filter != "*.*") {
    type_filter_.emplace(expansion.type_filter, LetterCase::kRespect);
  }
  return is_info_file_ ? ExpandFile(expansion) : ExpandTree(expansion);
}

std::optional<std::string> DirSide::ExpandFile(const Expansion& expansion) {
  const std::string path_text = PathToUtf8(path_);
  const FileInfo seen = file_->info();
  file_->HashInto(*file_hash_);
  DirInfoReader reader(std::move(*file_));
  const std::optional<std::string> root_name = reader.ReadRootName();
  if (!reader.failure().ok()) return path_text + ": " + DescribeError(reader.failure().error());
  if (!root_name) return path_text + ": ﾃﾞｨﾚｸﾄﾘ情報ﾌｧｲﾙが空です";
  root_name_ = *root_name;
  display_root_ = DisplayRoot(root_name_);
  FileRecord record;
  while (expansion.go_on()) {
    switch (reader.Next(record)) {
      case DirInfoReader::Outcome::kRecord:
        Add(record, {}, expansion.rules);
        break;
      case DirInfoReader::Outcome::kEnd: {
        const Status changed = CheckUnchanged(path_, seen);
        if (changed.ok()) return std::nullopt;
        return path_text + ": " + DescribeError(changed.error());
      }
      case DirInfoReader::Outcome::kFailed:
        if (!reader.failure().ok()) {
          return path_text + ": " + DescribeError(reader.failure().error());
        }
        return path_text + ":" + std::to_string(reader.line()) + ": ﾃﾞｨﾚｸﾄﾘ情報の行ではありません";
    }
  }
  return std::nullopt;
}

std::optional<std::string> DirSide::ExpandTree(const Expansion& expansion) {
  root_name_ = RootName(shown_path_);
  std::string written_path = root_name_;
  std::replace(written_path.begin(), written_path.end(), '\\', '/');
  root_differs_ = written_path != StripBackslash(shown_path_).bytes();
  display_root_ = DisplayRoot(root_name_);
  TreeVisitor visitor;
  visitor.enter_folder = expansion.go_on;
  visitor.read_entry = [&expansion] { (void)expansion.go_on(); };
  visitor.visit_file = [&](const FileRecord& record, const ExactName& exact) {
    Add(record, exact, expansion.rules);
  };
  visitor.file_gone = expansion.file_gone;
  visitor.output = expansion.output;
  visitor.no_entries = expansion.no_entries;
  const std::optional<WalkError> failed = WalkTree(path_, visitor);
  if (!failed) return std::nullopt;
  return PathToUtf8(failed->path) + ": " + DescribeError(failed->error);
}

void DirSide::Add(const FileRecord& record, const ExactName& exact, const KeyRules& rules) {
  if (type_filter_ && !type_filter_->Matches(record.name)) return;
  const bool key_replaced = MakeKey(record, exact, rules);
  if (key_replaced && rules.replaced == ReplacedNames::kStayApart) {
    key_ += '\0';
    key_ += ExactKey(exact, rules);
  }
  shown_.clear();
  if (!is_info_file_) shown_ += root_name_;
  shown_ += record.folder;
  shown_ += record.name;
  bool replaced = exact.folder_differs || exact.name_differs;
  if (!IsAscii(shown_)) replaced |= EncodeInPlace(shown_);
  const std::string_view key = Keep(key_);
  entries_.push_back({key, shown_ == key ? key : Keep(shown_), record.modified, record.size});
  replaced = replaced && (HoldsLackingCharacter(exact.folder) || HoldsLackingCharacter(exact.name));
  if (replaced) replaced_.insert(entries_.back().path.data());
}

// Makes the key without the exact name; true when "?" stands for something in it.
bool DirSide::MakeKey(const FileRecord& record, const ExactName& exact, const KeyRules& rules) {
  bool replaced = exact.name_differs;
  key_.clear();
  if (rules.range == CompareRange::kFullPath) {
    key_ += root_name_;
    replaced |= root_differs_;
  }
  if (rules.range != CompareRange::kNoPath) {
    key_ += record.folder;
    replaced |= exact.folder_differs;
  }
  key_ += record.name;
  return TurnIntoKey(key_, rules) || replaced;
}

std::string DirSide::ExactKey(const ExactName& exact, const KeyRules& rules) const {
  std::string text;
  if (rules.range == CompareRange::kFullPath) text += shown_path_.bytes();
  if (rules.range != CompareRange::kNoPath) text += exact.folder;
  text += exact.name;
  return Fold(text, rules);
}

EntriesNote DirSide::Note() const {
  EntriesNote note{path_, entries_.size(), {}, is_info_file_};
  if (is_info_file_) {
    note.sha256 = file_hash_->Digest();
    return note;
  }
  Sha256 hash;
  for (const DirEntry& entry : entries_) {
    hash.Add(entry.path);
    hash.Add("\t" + std::to_string(entry.modified) + "\t" + std::to_string(entry.size) + "\n");
  }
  note.sha256 = hash.Digest();
  return note;
}

std::string_view DirSide::Keep(std::string_view bytes) {
  char* const place = texts_.Allocate(bytes.size());
  std::memcpy(place, bytes.data(), bytes.size());
  return {place, bytes.size()};
}

void DirSide::SortByKey(const GoOn& go_on) {
  // Position 0 is an empty key that stands for no entry.
  std::vector<QSort::SortItem> items(entries_.size() + 1);
  for (size_t i = 0; i < entries_.size(); ++i) items[i + 1] = {entries_[i].key, i};
  if (!QSort::Sort(items, go_on)) return;
  std::vector<DirEntry> sorted;
  sorted.reserve(entries_.size());
  for (size_t i = 1; i < items.size(); ++i) sorted.push_back(entries_[items[i].entry]);
  entries_ = std::move(sorted);
}

}  // namespace ledrix::modDComp
