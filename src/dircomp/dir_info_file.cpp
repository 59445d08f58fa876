#include "dircomp/dir_info_file.h"

#include <algorithm>
#include <charconv>

#include "dircomp/tree_walk.h"
#include "platform/fixed_width.h"
#include "run/job_output.h"
#include "text/code_page_932.h"
#include "text/utf8.h"

namespace ledrix::modDComp {
namespace {

std::string CountText(int64_t count) {
  return "FileCount:" + std::to_string(count);
}

// Fills the record from its line; false when the line is none.
bool ParseRecord(std::string_view line, FileRecord& record) {
  const size_t size_comma = line.rfind(',');
  if (size_comma == std::string::npos || size_comma == 0) return false;
  const size_t date_comma = line.rfind(',', size_comma - 1);
  if (date_comma == std::string::npos) return false;
  const size_t folder_end = line.rfind('\\', date_comma);
  if (folder_end == std::string::npos || line[folder_end + 1] != ',') return false;
  // Between the comma behind the folder and that before the date; they may be one and the same.
  if (folder_end + 2 >= date_comma) return false;

  record.folder.assign(line.substr(0, folder_end + 1));
  record.name.assign(line.substr(folder_end + 2, date_comma - folder_end - 2));
  const auto date = ParseDateTime(line.substr(date_comma + 1, size_comma - date_comma - 1));
  const char* const end = line.data() + line.size();
  const auto size = std::from_chars(line.data() + size_comma + 1, end, record.size);
  if (!date || size.ec != std::errc() || size.ptr != end) return false;
  record.modified = CivilSeconds(*date);
  return true;
}

void WriteRecord(OutputFile& file, const FileRecord& record) {
  WriteLine(file, EncodeSjis(record.folder + "," + record.name + "," + DateText(record.modified) +
                             "," + SizeText(record.size)));
}

}  // namespace

std::string DateText(int64_t modified) {
  return FormatGeneral(FromCivilSeconds(modified));
}

std::string SizeText(uint64_t size) {
  return std::to_string(size);
}

void DirEditJob(RunServices& services) {
  const JobRecord& job = services.job();
  const NativePath& root = job.files.OldPath;
  JobOutput output(services);
  if (const Status failed = output.Create({}); !failed.ok()) {
    services.platform().ShowMessage(
        {DescribeError(failed.error()) + "\r\n" + PathToUtf8(output.path()), "List Open Error"});
    services.NoteEnd(JobEnd::kTrouble);
    services.AddResultLines(output.path(), PairEndText(PairEnd::kFailed));
    return;
  }
  output.WriteLine(EncodeSjis(RootName(root)));
  int64_t count = 0;
  TreeVisitor visitor;
  visitor.enter_folder = [&services] { return !services.YieldAndAskStop(); };
  visitor.read_entry = [&services] { services.platform().YieldToUi(); };
  visitor.visit_file = [&](const FileRecord& record) {
    WriteRecord(output.file(), record);
    ++count;
  };
  visitor.leave_folder = [&] { services.ShowBarText(CountText(count)); };
  if (const std::optional<WalkError> failed = WalkTree(root, visitor)) {
    services.ReportFileTrouble(failed->path, failed->error);
  }
  if (job.StopRequested) services.NoteEnd(JobEnd::kTrouble);
  output.Finish(CountText(count));
}

std::string DirInfoReader::ReadRootName() {
  SjisView line;
  std::string name = reader_.Next(0, line) ? DecodeSjis(line) : std::string();
  // A lone CR is no line end here, and must not become one in a listing.
  std::replace(name.begin(), name.end(), '\r', '?');
  return name;
}

DirInfoReader::Outcome DirInfoReader::Next(FileRecord& record) {
  SjisView line;
  if (!reader_.Next(reader_.lines_read(), line)) {
    return failure().ok() ? Outcome::kEnd : Outcome::kFailed;
  }
  const bool parsed = IsAscii(line.bytes()) ? ParseRecord(line.bytes(), record)
                                            : ParseRecord(DecodeSjis(line), record);
  return parsed ? Outcome::kRecord : Outcome::kFailed;
}

}  // namespace ledrix::modDComp
