// The run log, which doubles as the history of the folders that jobs touched, and the debug log.
//
// Run log (Ledrixr.Log in the program's folder), Shift_JIS, CR LF, one line a use of a folder:
//   folder "," yyyy/mm/dd hh:mm:ss
// where the folder ends in its separator; the last comma of a line divides it. A line without a
// valid date is passed over. Debug log (ldxdebug.log): yyyy/mm/dd hh:mm:ss " >> " text.
#pragma once

#include <string>
#include <vector>

#include "platform/local_time.h"
#include "platform/native_path.h"
#include "platform/services.h"

namespace ledrix {

struct HistoryEntry {
  NativePath folder;
  std::string date_text;  // "yyyy/mm/dd hh:mm:ss"
};

// Programs that run at the same time write it one after the other.
class RunLog {
 public:
  // `program_folder` ends in a separator; `platform` must outlive the log.
  RunLog(const NativePath& program_folder, PlatformServices& platform)
      : log_path_(program_folder + "Ledrixr.Log"),
        debug_path_(program_folder + "ldxdebug.log"),
        platform_(platform) {}

  // Appends the folder of a path with the current time. Failures are dropped, here and below.
  void WriteRunRecord(const NativePath& path);

  // The folders that exist, as far as can be told, and were used at most 30 calendar days ago,
  // sorted by folder without regard to letter case, the uses of one folder by date. A log that
  // exists but cannot be read is told as trouble and gives none.
  std::vector<HistoryEntry> LoadHistory();
  // Replaces the log by these entries, sorted as LoadHistory gives them. A log that exists but
  // cannot be read, now or when it was loaded, stays as it is.
  void SaveHistory(std::vector<HistoryEntry> entries);
  // Keeps the newest use of each folder, and of those the 50 newest.
  void CompactHistory();

  void WriteDebugLog(const std::string& text);

 private:
  // REQUIRES: the log's folder is locked.
  void ReplaceEntries(std::vector<HistoryEntry> entries);

  NativePath log_path_;
  NativePath debug_path_;
  PlatformServices& platform_;
  bool is_unread_ = false;  // the log exists and could not be loaded
};

}  // namespace ledrix
