#include "run/run_services.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "text/code_page_932.h"

namespace ledrix {
namespace {

constexpr const char* kExcluded = "対象外ﾌｧｲﾙﾀｲﾌﾟ";

const char* Label(JobKind kind) {
  switch (kind) {
    case JobKind::kComp:
      return " Compare ";
    case JobKind::kStepCnt:
      return " StepCnt ";
    case JobKind::kStepCsv:
      return " StepCSV ";
    case JobKind::kDirEdit:
      return " DirEdit ";
    case JobKind::kDirComp:
      return " DirComp ";
  }
  return "";
}

}  // namespace

std::string RightAligned(std::string number, size_t width) {
  if (number.size() < width) number.insert(0, width - number.size(), ' ');
  number.resize(width);
  return number;
}

void RunServices::AddResultLines(const NativePath& path, std::string_view message) {
  if (job_.RunCounter < std::numeric_limits<int16_t>::max()) ++job_.RunCounter;
  if (!job_.GuiMode) return;
  std::string number = std::to_string(job_.RunCounter);
  number = RightAligned(number.substr(number.size() - std::min<size_t>(2, number.size())), 2);
  front_end_.AddResultLine("(" + number + Label(job_.JobKind) + ") " + path.bytes());
  front_end_.AddResultLine("    " + std::string(message));
}

void RunServices::UpdateProgress(double unit_width, double count) {
  front_end_.SetProgress(std::min(count * unit_width - kProgressWidth, 0.0));
}

void RunServices::SetMessage(const std::string& text) {
  message_text_ = text;
  front_end_.SetMessage(text);
}

void RunServices::ShowBarText(const std::string& text) {
  bar_text_ = text;
  front_end_.SetBarText(text);
}

void RunServices::SetBarText(const std::string& text) {
  ShowBarText(text);
  platform_.YieldToUi();
}

bool RunServices::IsExcludedType(std::string_view name) {
  if (options_.NoPattern.empty()) return false;
  if (excluded_text_ != options_.NoPattern) {
    excluded_text_ = options_.NoPattern;
    excluded_ = PatternList(excluded_text_, LetterCase::kIgnore);
  }
  if (!excluded_.Matches(name)) return false;
  WriteCsvStatus(kExcluded);
  AddResultLines(job_.OutPath, std::string(name) + kExcluded + "  ");
  return true;
}

NativePath RunServices::CsvSummaryPath(const NativePath& listing) const {
  return AddBackslash(DirOf(listing)) + options_.ComboCSVName;
}

bool RunServices::OpenCsvSummary() {
  Result<OutputFile> file = OutputFile::Create(job_.CsvPath);
  if (!file.ok()) {
    platform_.ShowMessage({DescribeError(file.error()), "CSV File Open Error"});
    ReportFileTrouble(job_.CsvPath, file.error());
    return false;
  }
  job_.CsvFile = std::move(file.value());
  job_.CsvFile->Write("No.,OldFileName,OldStep,NewFileName,NewStep,Rep,Add,Del,Total\r\n");
  return true;
}

bool RunServices::FinishCsvFile() {
  OutputFile file = std::move(*job_.CsvFile);
  job_.CsvFile.reset();
  const Status closed = file.Close();
  if (closed.ok()) return true;
  file.Discard();
  ReportFileTrouble(job_.CsvPath, closed.error());
  return false;
}

void RunServices::CloseCsvSummary(int64_t count) {
  if (!job_.CsvFile) return;
  const bool written = FinishCsvFile();
  AddResultLines(job_.CsvPath, written
                                   ? " Total File Count=" + RightAligned(std::to_string(count), 5)
                                   : std::string("エラー"));
}

void RunServices::AbandonCsvSummary() {
  if (job_.CsvFile) FinishCsvFile();
}

void RunServices::WriteCsvCounts(const CompareCounts& counts) {
  std::string rest = std::to_string(counts.new_lines);
  for (const int64_t count : {counts.changed, counts.added, counts.deleted, counts.total()}) {
    rest += "," + std::to_string(count);
  }
  WriteCsvRow(std::to_string(counts.old_lines), SjisText::FromBytes(std::move(rest)));
}

void RunServices::WriteCsvStatus(std::string_view status) {
  if (options_.CsvStatus == 1) WriteCsvRow("-", EncodeSjis(status));
}

void RunServices::WriteCsvRow(std::string_view old_lines, const SjisText& rest) {
  if (!job_.OptCsvList || !job_.CsvFile) return;
  ++job_.CsvRowNo;
  OutputFile& file = *job_.CsvFile;
  file.Write(std::to_string(job_.CsvRowNo));
  file.Write(",");
  file.Write(PathToSjis(job_.OldPath).bytes());
  file.Write(",");
  file.Write(old_lines);
  file.Write(",");
  file.Write(PathToSjis(job_.NewPath).bytes());
  file.Write(",");
  file.Write(rest.bytes());
  file.Write("\r\n");
}

void RunServices::ReportFileTrouble(const NativePath& path, const Error& error) {
  platform_.ReportTrouble(PathToUtf8(path) + ": " + DescribeError(error));
  NoteEnd(JobEnd::kTrouble);
}

}  // namespace ledrix
