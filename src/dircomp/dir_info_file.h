// The directory information file: a snapshot of a directory tree.
//
// File format, Shift_JIS, CR LF, characters that Shift_JIS lacks as "?":
//   header   the root folder with "\" as separator, without the closing one
//   record   folder "," name "," date-time "," size
//            folder    relative to the root, begins and ends with "\"
//            date-time local time, "yyyy/mm/dd h:mm:ss", the date alone at midnight
//            size      bytes, decimal
// Nothing is quoted. A reader takes the last two fields as date-time and size and divides what
// stands before them behind its last "\", so that commas in names and folders do no harm.
#pragma once

#include <optional>
#include <string>

#include "dircomp/dir_entry.h"
#include "platform/files.h"
#include "platform/line_reader.h"
#include "run/run_services.h"

namespace ledrix::modDComp {

// Writes OutPath, which never records itself, from the tree below OldPath, which ends in a
// separator. When the tree cannot be walked to its end the job has failed and the file is removed.
void DirEditJob(RunServices& services);

// The date-time and the size of a record as they are written.
std::string DateText(int64_t modified);
std::string SizeText(uint64_t size);

// The line that tells of names in which "?" was written for what Shift_JIS lacks.
std::string ReplacedNamesText(int64_t names);

// Reads a directory information file record by record.
class DirInfoReader {
 public:
  explicit DirInfoReader(InputFile file) : reader_(std::move(file)) {}

  // The root name, from the first line; nothing when the file is empty or failure() tells why it
  // could not be read. To be called once, first.
  std::optional<std::string> ReadRootName();

  enum class Outcome { kRecord, kEnd, kFailed };
  // Reads the next record; one and the same object may be filled again and again. After kFailed
  // its content is undefined and line() is the number of the line that is no record, or
  // failure() tells why the file could not be read.
  Outcome Next(FileRecord& record);

  int64_t line() const { return reader_.lines_read(); }  // from 1
  const Status& failure() const { return reader_.failure(); }

 private:
  LineReader reader_;
};

}  // namespace ledrix::modDComp
