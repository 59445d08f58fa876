#include "dircomp/dir_side.h"

#include <algorithm>
#include <cstring>

#include "dircomp/dir_info_file.h"
#include "dircomp/tree_walk.h"
#include "text/ascii.h"
#include "text/code_page_932.h"
#include "text/name_pattern.h"
#include "text/utf8.h"

namespace ledrix::modDComp {
namespace {

// The full-width forms of U+FF61 to U+FF9F.
constexpr std::u32string_view kFullWidthKatakana =
    U"。「」、・ヲァィゥェォャュョッーアイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホ"
    U"マミムメモヤユヨラリルレロワン゛゜";
constexpr char32_t kFirstHalfWidth = 0xFF61;
constexpr char32_t kLastHalfWidth = 0xFF9F;
constexpr char32_t kSoundMark = 0xFF9E;
constexpr char32_t kHalfSoundMark = 0xFF9F;

char32_t FullWidthForm(char32_t c) {
  if (c == U' ') return 0x3000;
  if (c >= 0x21 && c <= 0x7E) return c + 0xFEE0;
  if (c >= kFirstHalfWidth && c <= kLastHalfWidth) return kFullWidthKatakana[c - kFirstHalfWidth];
  return c;
}

// The katakana letter that takes in the sound mark behind it, or 0.
char32_t WithSoundMark(char32_t half_width, char32_t mark) {
  const char32_t full_width = FullWidthForm(half_width);
  const bool ha_row = half_width >= 0xFF8A && half_width <= 0xFF8E;
  if (mark == kHalfSoundMark) return ha_row ? full_width + 2 : 0;
  if (mark != kSoundMark) return 0;
  if (half_width == 0xFF73) return 0x30F4;  // ヴ
  const bool ka_to_to = half_width >= 0xFF76 && half_width <= 0xFF84;
  return ka_to_to || ha_row ? full_width + 1 : 0;
}

// Turns a text that the range has chosen into a key.
void MakeKey(std::string& text, const KeyRules& rules) {
  if (IsAscii(text) && !rules.full_width) {
    if (rules.ignore_case) {
      for (char& c : text) c = AsciiUpper(c);
    }
    return;
  }
  std::u32string characters = Utf8Characters(text);
  if (rules.ignore_case) {
    std::transform(characters.begin(), characters.end(), characters.begin(), ToUpper);
  }
  if (rules.full_width) characters = ToFullWidth(characters);
  std::string utf8;
  for (const char32_t c : characters) AppendUtf8(utf8, c);
  text = EncodeSjis(utf8).bytes();
}

}  // namespace

std::u32string ToFullWidth(const std::u32string& text) {
  std::u32string wide;
  wide.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    const char32_t marked = i + 1 < text.size() ? WithSoundMark(text[i], text[i + 1]) : U'\0';
    wide += marked != 0 ? marked : FullWidthForm(text[i]);
    if (marked != 0) ++i;
  }
  return wide;
}

DirSide::DirSide(NativePath path, std::string_view info_pattern)
    : path_(std::move(path)),
      is_info_file_(MatchesPattern(FileNameOf(path_), info_pattern, LetterCase::kIgnore)) {}

Status DirSide::Open() {
  if (!is_info_file_) return Status();
  Result<InputFile> file = InputFile::Open(path_);
  if (!file.ok()) return file.error();
  file_ = std::move(file.value());
  return Status();
}

std::optional<std::string> DirSide::Expand(const KeyRules& rules, std::string_view type_filter,
                                           const GoOn& go_on) {
  if (type_filter != "*.*") type_filter_.emplace(type_filter, LetterCase::kRespect);
  return is_info_file_ ? ExpandFile(rules, go_on) : ExpandTree(rules, go_on);
}

std::optional<std::string> DirSide::ExpandFile(const KeyRules& rules, const GoOn& go_on) {
  DirInfoReader reader(std::move(*file_));
  root_name_ = reader.ReadRootName();
  display_root_ = DisplayRoot(root_name_);
  FileRecord record;
  while (go_on()) {
    switch (reader.Next(record)) {
      case DirInfoReader::Outcome::kRecord:
        Add(record, rules);
        break;
      case DirInfoReader::Outcome::kEnd:
        return std::nullopt;
      case DirInfoReader::Outcome::kFailed:
        if (!reader.failure().ok()) {
          return PathToUtf8(path_) + ": " + DescribeError(reader.failure().error());
        }
        return PathToUtf8(path_) + ":" + std::to_string(reader.line()) +
               ": ﾃﾞｨﾚｸﾄﾘ情報の行ではありません";
    }
  }
  return std::nullopt;
}

std::optional<std::string> DirSide::ExpandTree(const KeyRules& rules, const GoOn& go_on) {
  root_name_ = RootName(path_);
  display_root_ = DisplayRoot(root_name_);
  TreeVisitor visitor;
  visitor.enter_folder = go_on;
  visitor.read_entry = [&go_on] { (void)go_on(); };
  visitor.visit_file = [&](const FileRecord& record) { Add(record, rules); };
  const std::optional<WalkError> failed = WalkTree(path_, visitor);
  if (!failed) return std::nullopt;
  return PathToUtf8(failed->path) + ": " + DescribeError(failed->error);
}

void DirSide::Add(const FileRecord& record, const KeyRules& rules) {
  if (type_filter_ && !type_filter_->Matches(record.name)) return;
  key_.clear();
  if (rules.range == CompareRange::kFullPath) key_ += root_name_;
  if (rules.range != CompareRange::kNoPath) key_ += record.folder;
  key_ += record.name;
  MakeKey(key_, rules);
  shown_.clear();
  if (!is_info_file_) shown_ += root_name_;
  shown_ += record.folder;
  shown_ += record.name;
  if (!IsAscii(shown_)) shown_ = EncodeSjis(shown_).bytes();
  const std::string_view key = Keep(key_);
  entries_.push_back({key, shown_ == key ? key : Keep(shown_), record.modified, record.size});
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
