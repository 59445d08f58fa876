#include "jobs/run_log.h"

#include <algorithm>
#include <cerrno>
#include <optional>

#include "platform/files.h"
#include "platform/folder_lock.h"
#include "platform/output_file.h"
#include "platform/replacement.h"
#include "text/ascii.h"
#include "text/code_page_932.h"
#include "text/utf8.h"

namespace ledrix {
namespace {

constexpr int64_t kDaysKept = 30;
constexpr size_t kFoldersKept = 50;

// An entry with what it is sorted by.
struct SortedEntry {
  HistoryEntry entry;
  std::u32string folder_key;
};

std::u32string LowerCased(const std::string& text) {
  std::u32string characters = Utf8Characters(text);
  std::transform(characters.begin(), characters.end(), characters.begin(), ToLower);
  return characters;
}

std::vector<SortedEntry> WithKeys(std::vector<HistoryEntry> entries) {
  std::vector<SortedEntry> sorted;
  sorted.reserve(entries.size());
  for (HistoryEntry& entry : entries) {
    std::u32string key = LowerCased(entry.folder.bytes());
    sorted.push_back({std::move(entry), std::move(key)});
  }
  return sorted;
}

// By folder, the uses of one folder by date. The texts of dates sort as the dates do.
void SortByFolder(std::vector<SortedEntry>& entries) {
  std::stable_sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) {
    return a.entry.date_text < b.entry.date_text;
  });
  std::stable_sort(entries.begin(), entries.end(),
                   [](const auto& a, const auto& b) { return a.folder_key < b.folder_key; });
}

std::vector<HistoryEntry> WithoutKeys(std::vector<SortedEntry> sorted) {
  std::vector<HistoryEntry> entries;
  entries.reserve(sorted.size());
  for (SortedEntry& entry : sorted) entries.push_back(std::move(entry.entry));
  return entries;
}

// A folder that cannot be looked at may well be there, unless nothing can have its name.
bool MayBeFolder(const NativePath& path) {
  const Result<FileInfo> info = GetFileInfo(path);
  if (info.ok()) return info.value().kind == FileKind::kFolder;
  return !info.error().IsMissing() && info.error().system_number != ENAMETOOLONG;
}

std::optional<HistoryEntry> ReadLine(std::string_view line, const LocalTime& now) {
  // A comma is no trail byte, so it may be searched for in the bytes.
  const size_t comma = line.rfind(',');
  if (comma == std::string_view::npos) return std::nullopt;
  // To the file system a path would end at a NUL.
  if (line.find('\0') != std::string_view::npos) return std::nullopt;
  const std::optional<LocalTime> date = ParseDateTime(line.substr(comma + 1));
  if (!date || DayNumber(now) - DayNumber(*date) > kDaysKept) return std::nullopt;
  NativePath folder(DecodeSjis(SjisView::FromBytes(line.substr(0, comma))));
  if (!MayBeFolder(folder)) return std::nullopt;
  return HistoryEntry{std::move(folder), FormatDateTime(*date)};
}

void AppendLine(const NativePath& path, const SjisText& line) {
  const FolderLock lock(DirOf(path));
  Result<OutputFile> file = OutputFile::Append(path);
  if (!file.ok()) return;
  file.value().Write(line.bytes() + "\r\n");
  file.value().Close().Ignore();
}

SjisText LogLine(const NativePath& folder, const std::string& date_text) {
  return PathToSjis(folder) + SjisView::FromBytes("," + date_text);
}

}  // namespace

void RunLog::WriteRunRecord(const NativePath& path) {
  AppendLine(log_path_, LogLine(DirOf(path), FormatDateTime(platform_.Now())));
}

std::vector<HistoryEntry> RunLog::LoadHistory() {
  const Result<std::string> bytes = ReadWholeFile(log_path_);
  std::vector<HistoryEntry> entries;
  is_unread_ = !bytes.ok() && !bytes.error().IsMissing();
  if (!bytes.ok()) {
    if (is_unread_) {
      platform_.ReportTrouble(PathToUtf8(log_path_) + ": " + DescribeError(bytes.error()));
    }
    return entries;
  }
  const LocalTime now = platform_.Now();
  std::string_view text = bytes.value();
  while (!text.empty()) {
    const std::string_view line = TakeLine(text);
    if (std::optional<HistoryEntry> entry = ReadLine(line, now)) {
      entries.push_back(std::move(*entry));
    }
  }
  std::vector<SortedEntry> sorted = WithKeys(std::move(entries));
  SortByFolder(sorted);
  return WithoutKeys(std::move(sorted));
}

void RunLog::SaveHistory(std::vector<HistoryEntry> entries) {
  const FolderLock lock(DirOf(log_path_));
  ReplaceEntries(std::move(entries));
}

void RunLog::ReplaceEntries(std::vector<HistoryEntry> entries) {
  const Status unread = ReadWholeFile(log_path_).status();
  if (is_unread_ || (!unread.ok() && !unread.error().IsMissing())) return;
  std::vector<SortedEntry> sorted = WithKeys(std::move(entries));
  SortByFolder(sorted);
  std::string bytes;
  for (const SortedEntry& entry : sorted) {
    bytes += LogLine(entry.entry.folder, entry.entry.date_text).bytes() + "\r\n";
  }
  ReplaceFile(log_path_, bytes).Ignore();
}

void RunLog::CompactHistory() {
  const FolderLock lock(DirOf(log_path_));
  RemoveOldReplacements(log_path_);
  std::vector<SortedEntry> entries = WithKeys(LoadHistory());
  // Of neighbours with one folder the last is the newest.
  std::vector<SortedEntry> newest;
  for (SortedEntry& entry : entries) {
    if (!newest.empty() && newest.back().folder_key == entry.folder_key) newest.pop_back();
    newest.push_back(std::move(entry));
  }
  std::stable_sort(newest.begin(), newest.end(), [](const auto& a, const auto& b) {
    return a.entry.date_text > b.entry.date_text;
  });
  if (newest.size() > kFoldersKept) newest.resize(kFoldersKept);
  ReplaceEntries(WithoutKeys(std::move(newest)));
}

void RunLog::WriteDebugLog(const std::string& text) {
  AppendLine(debug_path_, EncodeSjis(FormatDateTime(platform_.Now()) + " >> " + text));
}

}  // namespace ledrix
