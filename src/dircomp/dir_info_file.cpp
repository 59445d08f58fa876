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

// What a walk writes.
class InfoWriter {
 public:
  InfoWriter(RunServices& services, JobOutput& output) : services_(services), output_(output) {}

  void WriteRoot(const NativePath& root) {
    output_.WriteLine(EncodeSjis(RootName(root)));
    replaced_ += HoldsLackingCharacter(root.bytes()) ? 1 : 0;
  }

  std::optional<WalkError> WriteTree(const NativePath& root) {
    TreeVisitor visitor;
    visitor.enter_folder = [this] { return !services_.YieldAndAskStop(); };
    visitor.read_entry = [this] { services_.platform().YieldToUi(); };
    visitor.visit_file = [this](const FileRecord& record, const ExactName& exact) {
      // A name without "?" is not looked at again.
      if (!WriteRecord(record)) return;
      const bool replaced =
          HoldsLackingCharacter(exact.folder) || HoldsLackingCharacter(exact.name);
      replaced_ += replaced ? 1 : 0;
    };
    visitor.file_gone = [this](const NativePath& path) {
      services_.platform().ReportTrouble(FileGoneText(path));
    };
    visitor.leave_folder = [this] { services_.ShowBarText(CountText(count_)); };
    visitor.output = output_.Identity();
    if (services_.job().rerun) visitor.no_entries = &services_.job().rerun->no_entries;
    return WalkTree(root, visitor);
  }

  int64_t count() const { return count_; }
  int64_t replaced() const { return replaced_; }
  std::string Digest() const { return hash_.Digest(); }

 private:
  // True when what was written holds a "?".
  bool WriteRecord(const FileRecord& record) {
    const SjisText line = EncodeSjis(record.folder + "," + record.name + "," +
                                     DateText(record.modified) + "," + SizeText(record.size));
    WriteLine(output_.file(), line);
    if (services_.witness() != nullptr) {
      hash_.Add(line.bytes());
      hash_.Add("\n");
    }
    ++count_;
    return line.bytes().find('?') != std::string::npos;
  }

  RunServices& services_;
  JobOutput& output_;
  Sha256 hash_;  // of the records, for the witness
  int64_t count_ = 0;
  int64_t replaced_ = 0;  // names written with "?" for what Shift_JIS lacks
};

}  // namespace

std::string DateText(int64_t modified) {
  return FormatGeneral(FromCivilSeconds(modified));
}

std::string SizeText(uint64_t size) {
  return std::to_string(size);
}

std::string ReplacedNamesText(int64_t names) {
  return std::to_string(names) + " 件の名前に Shift_JIS にない文字があり ? で書きました";
}

void DirEditJob(RunServices& services) {
  const JobRecord& job = services.job();
  const NativePath& root = job.files.OldPath;
  JobOutput output(services);
  if (const Status failed = output.Create(); !failed.ok()) {
    services.platform().ShowMessage(
        {DescribeError(failed.error()) + "\r\n" + PathToUtf8(output.path()), "List Open Error"});
    output.Abandon(PairEnd::kFailed);
    return;
  }
  InfoWriter writer(services, output);
  writer.WriteRoot(job.rerun ? job.rerun->shown[Side::kOld].path : root);
  if (const std::optional<WalkError> failed = writer.WriteTree(root)) {
    services.ReportFileTrouble(failed->path, failed->error);
    output.Abandon(PairEnd::kFailed);
    return;
  }
  if (writer.replaced() > 0) {
    services.platform().ReportTrouble(ReplacedNamesText(writer.replaced()));
  }
  if (job.StopRequested) {
    services.NoteEnd(JobEnd::kTrouble);
  } else if (JobWitness* const witness = services.witness()) {
    witness->EntriesTaken(Side::kOld,
                          {root, static_cast<uint64_t>(writer.count()), writer.Digest(), false});
  }
  output.Finish(CountText(writer.count()));
}

std::optional<std::string> DirInfoReader::ReadRootName() {
  SjisView line;
  if (!reader_.Next(0, line)) return std::nullopt;
  std::string name = DecodeSjis(line);
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
