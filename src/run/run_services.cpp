#include "run/run_services.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "text/code_page_932.h"

namespace ledrix {
namespace {

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
  front_end_.AddResultLine("(" + number + Label(job_.request.JobKind) + ") " + path.bytes());
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
  return excluded_.Matches(name);
}

NativePath RunServices::CsvSummaryPath(const NativePath& listing) const {
  return AddBackslash(DirOf(listing)) + options_.ComboCSVName;
}

bool RunServices::OpenCsvSummary(const NativePath& path) {
  csv_hash_.Reset();
  const Status opened = csv_.Open(path, witness_ != nullptr ? &csv_hash_ : nullptr);
  if (opened.ok()) return true;
  platform_.ShowMessage({DescribeError(opened.error()), "CSV File Open Error"});
  ReportFileTrouble(path, opened.error());
  return false;
}

bool RunServices::FinishCsvFile() {
  const Status closed = csv_.Close();
  if (!closed.ok()) ReportFileTrouble(csv_.path(), closed.error());
  if (closed.ok() && witness_ != nullptr) {
    witness_->OutputWritten({"CSV", csv_.path(), csv_hash_.size(), csv_hash_.Digest()});
  }
  return closed.ok();
}

void RunServices::CloseCsvSummary(int64_t count) {
  if (!csv_.is_open()) return;
  const bool written = FinishCsvFile();
  AddResultLines(csv_.path(), written
                                  ? " Total File Count=" + RightAligned(std::to_string(count), 5)
                                  : std::string(PairEndText(PairEnd::kFailed)));
}

void RunServices::AbandonCsvSummary() {
  if (csv_.is_open()) FinishCsvFile();
}

void RunServices::WriteCsvStatus(const PairPaths& paths, std::string_view status) {
  if (IsOn(options_.CsvStatus)) csv_.WriteStatus(paths, status);
}

void RunServices::ReportLoss(const NativePath& path, uint64_t count, uint64_t first_line) {
  lost_characters_ += count;
  platform_.ReportTrouble(PathToUtf8(path) + ": " + std::to_string(count) +
                          " 文字を ? に置き換えました（最初は " + std::to_string(first_line) +
                          " 行目）");
}

void RunServices::ReportTotalLoss() {
  if (lost_characters_ == 0) return;
  platform_.ReportTrouble("合計 " + std::to_string(lost_characters_) +
                          " 文字を ? に置き換えました");
  lost_characters_ = 0;
}

void RunServices::ReportFileTrouble(const NativePath& path, const Error& error) {
  platform_.ReportTrouble(PathToUtf8(path) + ": " + DescribeError(error));
  NoteEnd(JobEnd::kTrouble);
}

}  // namespace ledrix
