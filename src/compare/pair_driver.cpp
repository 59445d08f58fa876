#include "compare/pair_driver.h"

#include <new>
#include <optional>
#include <utility>

#include "charset/read_with_conversion.h"
#include "compare/difference.h"
#include "compare/listing_body.h"
#include "compare/listing_format.h"
#include "compare/listing_frame.h"
#include "compare/pair_outputs.h"
#include "text/code_page_932.h"

namespace ledrix::modComp {
namespace {

// Counts of the result list take five characters.
std::string RightAlignedCount(int64_t count) {
  return RightAligned(std::to_string(count), 5);
}

// Moves the progress bar by the bytes read of both sides.
class ProgressMeter : public LineCounter {
 public:
  ProgressMeter(RunServices& services, uint64_t total_bytes)
      : services_(services),
        unit_width_(total_bytes > 0 ? kProgressWidth / static_cast<double>(total_bytes) : 0) {}

  void LineRead(int64_t number, size_t bytes) override {
    bytes_ += bytes;
    if (number % kLinesPerUpdate == 0) Update();
  }
  void LinesRead(int64_t number, int64_t lines, size_t bytes) override {
    bytes_ += bytes;
    if (number % kLinesPerUpdate < lines) Update();
  }

 private:
  static constexpr int64_t kLinesPerUpdate = 20;

  void Update() {
    if (!services_.job().GuiMode) return;
    services_.UpdateProgress(unit_width_, static_cast<double>(bytes_));
  }

  RunServices& services_;
  double unit_width_;
  uint64_t bytes_ = 0;
};

ListedFile ToListedFile(const NativePath& path, const FileInfo& info) {
  return {PathToSjis(path), SjisText::FromBytes(FormatStamp(ToLocalTime(info.modified)))};
}

// One pair on its way through the driver.
class PairCompare {
 public:
  explicit PairCompare(RunServices& services)
      : services_(services),
        job_(services.job()),
        files_(job_.files),
        old_side_{files_.OldPath, std::nullopt, std::nullopt, {}},
        new_side_{files_.NewPath, std::nullopt, std::nullopt, {}},
        options_(services.options()),
        format_(options_),
        outputs_(services, options_) {}

  // Ends with `ended_early_` set unless the compare ran to its end.
  void CompareFiles();
  // Leaves no output of an earlier run that could pass for this pair's.
  void EndOutputs();
  // Ends a pair that ran out of memory as failed.
  void GiveUp();
  PairEnd MakeResultLine();

 private:
  // A file that was judged as a whole, and how it is to be read; nothing when it is judged as it
  // is read.
  struct JudgedInput {
    std::optional<JudgedFile> file;
    CharsetChoice choice;
  };

  // Tells why an output cannot be written, if so, and ends the pair; true when it can be.
  bool OpenOutputs(std::optional<OutputFailure> failed);
  bool HaveSameContents();
  // The skip rule.
  bool Skips();
  // Both sides together, when the option wants that.
  bool JudgeInputs();
  void TellOpen(const NativePath& path, const modJudgeCode::SureVerdict& verdict);
  bool ConvertInput(const NativePath& path, ReadInput& side, JudgedInput& judged,
                    const char* title);
  // Tells why an input cannot be judged or converted and ends the pair; always false.
  bool FailToConvert(const Error& error, const NativePath& path, const char* title);
  std::optional<InputFile> OpenInput(const NativePath& path, ReadInput& side, const char* title);
  void CompareOpened(InputFile old_file, InputFile new_file);
  void WriteHeader(const LineRing& old_ring, const LineRing& new_ring);
  void WriteSummary();
  // Runs the loop to the end of both files; false when it was stopped or an output failed.
  bool RunCompareLoop(Difference& difference);
  void CheckInput(const NativePath& path, const ReadInput& side, const LineRing& ring);
  bool LossesHideADifference();
  // Tells of each side how many of its characters became "?".
  void TellLosses();
  // Tells why a file cannot be opened and ends the pair; always false.
  bool FailToOpen(const char* title, const char* kind, const Error& error, const NativePath& path);
  // "UnMatch=" and what follows it in the result list.
  std::string CountsText() const;

  // Each ends the pair and returns false.
  bool Fail() {
    ended_early_ = PairEnd::kFailed;
    return false;
  }
  bool Stop() {
    ended_early_ = PairEnd::kStopped;
    return false;
  }

  RunServices& services_;
  JobRecord& job_;
  const JobFiles& files_;
  ReadInput old_side_;  // what is read
  ReadInput new_side_;
  JudgedInput judged_[2];  // old, new
  const CompareOptions options_;
  const ListingFormat format_;
  PairOutputs outputs_;
  CompareCounts counts_;
  bool both_regular_ = false;           // the skip rule has looked at both inputs
  std::optional<PairEnd> ended_early_;  // how the pair ended unless the compare ran to its end
};

void PairCompare::CompareFiles() {
  if (!OpenOutputs(outputs_.Claim()) || Skips()) return;
  if (job_.GuiMode) services_.UpdateProgress(0, 0);
  if (!JudgeInputs() || !ConvertInput(files_.OldPath, old_side_, judged_[0], "OLD Error") ||
      !ConvertInput(files_.NewPath, new_side_, judged_[1], "NEW Error")) {
    return;
  }
  std::optional<InputFile> old_file = OpenInput(files_.OldPath, old_side_, "OLD Open Error");
  if (!old_file) return;
  std::optional<InputFile> new_file = OpenInput(files_.NewPath, new_side_, "NEW Open Error");
  TellLosses();
  if (!new_file || !OpenOutputs(outputs_.Create())) return;
  CompareOpened(std::move(*old_file), std::move(*new_file));
}

// The text is the one for an output that cannot be created: to the user it is the same.
bool PairCompare::OpenOutputs(std::optional<OutputFailure> failed) {
  return !failed || FailToOpen(failed->title, "OUTPUT:", failed->error, failed->path);
}

bool PairCompare::Skips() {
  if (!options_.skip_same_stamp) return false;
  const Result<FileInfo> old_info = GetFileInfo(files_.OldPath);
  const Result<FileInfo> new_info = GetFileInfo(files_.NewPath);
  if (!old_info.ok() || !new_info.ok()) return false;
  const FileInfo& a = old_info.value();
  const FileInfo& b = new_info.value();
  both_regular_ = a.kind == FileKind::kRegular && b.kind == FileKind::kRegular;
  if (!both_regular_ || !HaveSameStamp(a, b)) return false;
  if (job_.skip_rule == SkipRule::kSameContents && !HaveSameContents()) return false;
  ended_early_ = PairEnd::kSkipped;
  outputs_.RemoveListing();
  return true;
}

// A file that cannot be read is left to the compare, which tells why.
bool PairCompare::HaveSameContents() {
  Result<InputFile> old_file = InputFile::OpenRegular(files_.OldPath);
  Result<InputFile> new_file = InputFile::OpenRegular(files_.NewPath);
  if (!old_file.ok() || !new_file.ok()) return false;
  services_.platform().YieldBetweenBlocks(old_file.value());
  return SameContents(old_file.value(), new_file.value()) &&
         CheckUnchanged(files_.OldPath, old_file.value().info()).ok() &&
         CheckUnchanged(files_.NewPath, new_file.value().info()).ok();
}

bool PairCompare::JudgeInputs() {
  if (services_.options().CharsetCode != kSureAuto) return true;
  const std::string before = services_.bar_text();
  services_.SetBarText("文字コード判定中");
  const struct {
    const NativePath& path;
    const char* title;
  } inputs[] = {{files_.OldPath, "OLD Error"}, {files_.NewPath, "NEW Error"}};
  for (size_t i = 0; i < 2; ++i) {
    Result<JudgedFile> judged = JudgeFile(services_, inputs[i].path);
    if (!judged.ok()) return FailToConvert(judged.error(), inputs[i].path, inputs[i].title);
    judged_[i].file.emplace(std::move(judged.value()));
    if (services_.YieldAndAskStop()) return Stop();
  }
  services_.SetBarText(before);
  const modJudgeCode::PairVerdicts verdicts =
      modJudgeCode::JudgePair(judged_[0].file->judge, judged_[1].file->judge);
  judged_[0].choice = ChoiceOf(verdicts.old_side);
  judged_[1].choice = ChoiceOf(verdicts.new_side);
  TellOpen(files_.OldPath, verdicts.old_side);
  TellOpen(files_.NewPath, verdicts.new_side);
  return true;
}

void PairCompare::TellOpen(const NativePath& path, const modJudgeCode::SureVerdict& verdict) {
  if (verdict.code) return;
  const std::string text = OpenText(verdict);
  services_.platform().ReportTrouble(PathToUtf8(path) + ": " + text);
  if (!verdict.rival || !job_.open_judgement.text.empty()) return;
  const bool is_sjis = verdict.likeliest == modJudgeCode::SureCode::kSjis;
  job_.open_judgement = {text, CharsetNameOf(is_sjis ? *verdict.rival : *verdict.likeliest)};
}

bool PairCompare::ConvertInput(const NativePath& path, ReadInput& side, JudgedInput& judged,
                               const char* title) {
  services_.platform().YieldToUi();
  Result<ReadInput> read = judged.file
                               ? ReadJudged(services_, path, std::move(*judged.file), judged.choice)
                               : ReadWithConversion(services_, path);
  if (!read.ok()) return FailToConvert(read.error(), path, title);
  side = std::move(read.value());
  return !services_.YieldAndAskStop() || Stop();
}

bool PairCompare::FailToConvert(const Error& error, const NativePath& path, const char* title) {
  if (services_.YieldAndAskStop()) return Stop();
  services_.platform().ShowMessage({"Chrcode ERR:" + DescribeError(error) +
                                        "\r\n文字コード標準(無変換)でリトライしてください\r\n" +
                                        PathToUtf8(path),
                                    title});
  return Fail();
}

std::optional<InputFile> PairCompare::OpenInput(const NativePath& path, ReadInput& side,
                                                const char* title) {
  if (side.copy) {
    services_.platform().YieldBetweenBlocks(*side.copy);
    return std::exchange(side.copy, std::nullopt);
  }
  Result<InputFile> file = both_regular_ ? InputFile::OpenRegular(path) : InputFile::Open(path);
  if (file.ok()) {
    services_.platform().YieldBetweenBlocks(file.value());
    if (!side.seen) side.seen = file.value().info();
    return std::move(file.value());
  }
  FailToOpen(title, "INFILE:", file.error(), path);
  return std::nullopt;
}

bool PairCompare::FailToOpen(const char* title, const char* kind, const Error& error,
                             const NativePath& path) {
  // A stop request ends a wait for a pipe with an error.
  if (services_.YieldAndAskStop()) return Stop();
  services_.platform().ShowMessage(
      {kind + DescribeError(error) + "\r\n" + PathToUtf8(path), title});
  return Fail();
}

void PairCompare::CompareOpened(InputFile old_file, InputFile new_file) {
  ProgressMeter meter(services_, old_file.info().size + new_file.info().size);
  LineRing old_ring(std::move(old_file), options_, meter);
  LineRing new_ring(std::move(new_file), options_, meter);
  ListingBody body(options_, format_, old_ring, new_ring, outputs_.listing(), outputs_.sides(),
                   counts_);
  Difference difference(old_ring, new_ring, options_, body);

  WriteHeader(old_ring, new_ring);
  const bool ended = RunCompareLoop(difference);
  counts_.old_lines = old_ring.lines_read();
  counts_.new_lines = new_ring.lines_read();
  if (ended_early_ != PairEnd::kStopped) {
    CheckInput(files_.OldPath, old_side_, old_ring);
    CheckInput(files_.NewPath, new_side_, new_ring);
  }
  if (ended_early_ == PairEnd::kFailed) {
    outputs_.Discard();
    return;
  }
  if (ended && LossesHideADifference()) {
    outputs_.Discard();
    return;
  }
  if (ended) {
    body.Close();
    WriteSummary();
    if (counts_.total() == 0) outputs_.Drop();
  }
  if (!outputs_.Close()) Fail();
}

// A file that could not be read to its end, or that is no longer what was read, has no result.
void PairCompare::CheckInput(const NativePath& path, const ReadInput& side, const LineRing& ring) {
  Status failure = ring.failure();
  if (side.seen) failure.KeepFirst(CheckUnchanged(path, *side.seen));
  if (failure.ok()) return;
  services_.ReportFileTrouble(path, failure.error());
  Fail();
}

// Two texts that read the same only because different characters became "?" are not the same.
bool PairCompare::LossesHideADifference() {
  if (old_side_.loss == new_side_.loss) return false;
  services_.platform().ReportTrouble(PathToUtf8(files_.OldPath) +
                                     ": ? になった文字が旧と新で異なります");
  if (counts_.total() > 0) return false;
  Fail();
  return true;
}

void PairCompare::TellLosses() {
  for (const auto& [side, path] :
       {std::pair(&old_side_, &files_.OldPath), std::pair(&new_side_, &files_.NewPath)}) {
    const ConversionLoss& loss = side->loss;
    if (loss.count() == 0) continue;
    services_.ReportLoss(*path, loss.count(), loss.first_line());
  }
}

void PairCompare::WriteHeader(const LineRing& old_ring, const LineRing& new_ring) {
  const HeaderData data{ToListedFile(old_side_.shown_path, old_ring.info()),
                        ToListedFile(new_side_.shown_path, new_ring.info()),
                        services_.platform().Now()};
  const auto write = options_.simple ? WriteSimpleHeader : WriteHeaderBox;
  write(outputs_.listing(), options_, format_, data);
  outputs_.sides().WriteHeading(FormatStamp(data.run_time), data.old_file.path, data.new_file.path);
}

void PairCompare::WriteSummary() {
  const auto write = options_.simple ? WriteSimpleSummary : WriteSummaryBox;
  write(outputs_.listing(), format_, counts_);
  outputs_.sides().WriteEndLine(counts_);
}

bool PairCompare::RunCompareLoop(Difference& difference) {
  if (services_.YieldAndAskStop()) return Stop();
  difference.Start();
  while (!difference.finished()) {
    difference.CompareStep();
    if (services_.YieldAndAskStop()) return Stop();
    if (outputs_.Failed()) return false;
  }
  if (job_.GuiMode) services_.UpdateProgress(kProgressWidth, 1);
  return !services_.YieldAndAskStop() || Stop();
}

// Puts the pair's end into the result list and the CSV summary.
PairEnd PairCompare::MakeResultLine() {
  const PairEnd end =
      ended_early_.value_or(counts_.total() == 0 ? PairEnd::kUnchanged : PairEnd::kChanged);
  const PairPaths paths{old_side_.shown_path, new_side_.shown_path};
  if (end == PairEnd::kChanged) {
    services_.NoteEnd(JobEnd::kDifference);
    services_.WriteCsvCounts(paths, counts_);
    services_.AddResultLines(files_.OutPath, CountsText());
    return end;
  }
  if (end == PairEnd::kFailed || end == PairEnd::kStopped) services_.NoteEnd(JobEnd::kTrouble);
  std::string status = PairEndText(end);
  if (end == PairEnd::kUnchanged) status += "   Old(New)=" + RightAlignedCount(counts_.old_lines);
  services_.WriteCsvStatus(paths, status);
  services_.AddResultLines(files_.OutPath, status);
  return end;
}

void PairCompare::GiveUp() {
  Fail();
  outputs_.Discard();
  EndOutputs();
  MakeResultLine();
}

void PairCompare::EndOutputs() {
  const bool ended_badly = ended_early_ == PairEnd::kFailed || ended_early_ == PairEnd::kStopped;
  if (ended_badly) outputs_.RemoveEarlier();
}

std::string PairCompare::CountsText() const {
  return "UnMatch=" + RightAlignedCount(counts_.total()) +
         " OLD=" + RightAlignedCount(counts_.old_lines) +
         " NEW=" + RightAlignedCount(counts_.new_lines) +
         " Rep=" + RightAlignedCount(counts_.changed) + " Add=" + RightAlignedCount(counts_.added) +
         " Del=" + RightAlignedCount(counts_.deleted);
}

}  // namespace

PairEnd ComparePair(RunServices& services) {
  PairCompare pair(services);
  try {
    pair.CompareFiles();
  } catch (const std::bad_alloc&) {
    pair.GiveUp();
    throw;
  }
  pair.EndOutputs();
  return pair.MakeResultLine();
}

}  // namespace ledrix::modComp
