#include "compare/pair_driver.h"

#include <array>
#include <optional>
#include <utility>

#include "charset/read_with_conversion.h"
#include "compare/difference.h"
#include "compare/listing_body.h"
#include "compare/listing_format.h"
#include "compare/listing_frame.h"
#include "compare/side_outputs.h"
#include "platform/output_guard.h"
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
        inputs_{files_.OldPath, files_.NewPath},
        old_side_{files_.OldPath, std::nullopt, {}},
        new_side_{files_.NewPath, std::nullopt, {}},
        options_(services.options()),
        format_(options_),
        sides_(options_, job_.outputs.MergeMarks ? MergeMarks::kWritten : MergeMarks::kNone) {}

  // Ends with `ended_early_` set unless the compare ran to its end.
  void CompareFiles();
  // A listing or difference file of an earlier run must not pass for this pair's when it failed or
  // was stopped before it opened its own.
  void RemoveEarlierOutputs();
  PairEnd MakeResultLine();

 private:
  bool OutputsAreSafe();
  bool HaveSameContents();
  // The skip rule.
  bool Skips();
  bool ConvertInput(const NativePath& path, ReadInput& side, const char* title);
  std::optional<InputFile> OpenInput(const NativePath& path, ReadInput& side, const char* title);
  bool CreateOutputs();
  bool CreateOutput(const NativePath& path, const char* title, std::optional<OutputFile>& file,
                    Result<OutputFile> (*create)(const NativePath&) = OutputFile::Create);
  void CompareOpened(InputFile old_file, InputFile new_file);
  void WriteHeader(const LineRing& old_ring, const LineRing& new_ring);
  void WriteSummary();
  // Runs the loop to the end of both files; false when it was stopped or an output failed.
  bool RunCompareLoop(Difference& difference);
  bool OutputFailed() const;
  bool LossesHideADifference();
  // Tells of each side how many of its characters became "?".
  void TellLosses();
  // Closes every output; on a failure removes them all and tells which file it was.
  void CloseOutputs();
  void DiscardOutputs();
  // True for an output that is no input, and that no other pair has written.
  bool IsNobodyElses(const NativePath& output) const;
  void RemoveOutput(const NativePath& path);
  void RemoveUnwantedOutputs();
  // Tells why a file cannot be opened and ends the pair; always false.
  bool FailToOpen(const char* title, const char* kind, const Error& error, const NativePath& path);
  std::vector<OutputFile*> Outputs();
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
  const std::vector<NativePath> inputs_;  // as they were named, before any conversion
  ReadInput old_side_;                    // what is read
  ReadInput new_side_;
  const CompareOptions options_;
  const ListingFormat format_;
  std::optional<OutputFile> listing_;
  SideOutputs sides_;
  CompareCounts counts_;
  bool has_claimed_ = false;            // the outputs are claimed for this pair
  bool both_regular_ = false;           // the skip rule has looked at both inputs
  std::optional<PairEnd> ended_early_;  // how the pair ended unless the compare ran to its end
};

void PairCompare::CompareFiles() {
  if (!OutputsAreSafe() || Skips()) return;
  if (job_.GuiMode) services_.UpdateProgress(0, 0);
  if (!ConvertInput(files_.OldPath, old_side_, "OLD Error") ||
      !ConvertInput(files_.NewPath, new_side_, "NEW Error")) {
    return;
  }
  std::optional<InputFile> old_file = OpenInput(files_.OldPath, old_side_, "OLD Open Error");
  if (!old_file) return;
  std::optional<InputFile> new_file = OpenInput(files_.NewPath, new_side_, "NEW Open Error");
  TellLosses();
  if (!new_file || !CreateOutputs()) return;
  CompareOpened(std::move(*old_file), std::move(*new_file));
}

// The text is the one for an output that cannot be created: to the user it is the same.
bool PairCompare::OutputsAreSafe() {
  struct Output {
    const NativePath& path;
    const char* title;
  };
  const std::array<Output, 3> outputs = {{{files_.OutPath, "List Open Error"},
                                          {files_.SbnPath, "Sbn List Open Error"},
                                          {files_.MrgPath, "Merge Source Open Error"}}};
  std::vector<NativePath> others;
  if (services_.csv().is_open()) others.push_back(services_.csv().path());
  for (const Output& output : outputs) {
    if (output.path.empty()) continue;
    if (const Status refused = RefuseOutput(output.path, inputs_, others, job_.ProtectedFiles);
        !refused.ok()) {
      return FailToOpen(output.title, "OUTPUT:", refused.error(), output.path);
    }
    others.push_back(output.path);
  }
  const auto met = job_.claims.Claim({files_.OutPath, files_.SbnPath, files_.MrgPath});
  has_claimed_ = !met;
  return !met ||
         FailToOpen(outputs[met->index].title, "OUTPUT:", met->error, outputs[met->index].path);
}

bool PairCompare::Skips() {
  if (!options_.skip_same_stamp) return false;
  const Result<FileInfo> old_info = GetFileInfo(files_.OldPath);
  const Result<FileInfo> new_info = GetFileInfo(files_.NewPath);
  if (!old_info.ok() || !new_info.ok()) return false;
  const FileInfo& a = old_info.value();
  const FileInfo& b = new_info.value();
  both_regular_ = a.kind == FileKind::kRegular && b.kind == FileKind::kRegular;
  const bool same = both_regular_ && a.size == b.size && a.modified.tv_sec == b.modified.tv_sec &&
                    a.modified.tv_nsec == b.modified.tv_nsec;
  if (!same) return false;
  if (job_.skip_rule == SkipRule::kSameContents && !HaveSameContents()) return false;
  ended_early_ = PairEnd::kSkipped;
  RemoveOutput(files_.OutPath);
  return true;
}

// A file that cannot be read is left to the compare, which tells why.
bool PairCompare::HaveSameContents() {
  Result<InputFile> old_file = InputFile::OpenRegular(files_.OldPath);
  Result<InputFile> new_file = InputFile::OpenRegular(files_.NewPath);
  if (!old_file.ok() || !new_file.ok()) return false;
  services_.platform().YieldBetweenBlocks(old_file.value());
  return SameContents(old_file.value(), new_file.value());
}

bool PairCompare::ConvertInput(const NativePath& path, ReadInput& side, const char* title) {
  services_.platform().YieldToUi();
  Result<ReadInput> read = ReadWithConversion(services_, path);
  if (read.ok()) {
    side = std::move(read.value());
    return !services_.YieldAndAskStop() || Stop();
  }
  if (services_.YieldAndAskStop()) return Stop();
  services_.platform().ShowMessage({"Chrcode ERR:" + DescribeError(read.error()) +
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
    return std::move(file.value());
  }
  FailToOpen(title, "INFILE:", file.error(), path);
  return std::nullopt;
}

bool PairCompare::CreateOutputs() {
  // Most pairs of a multiple compare are equal; their listings need not be made to be removed.
  const auto create =
      options_.drop_unchanged_listing ? OutputFile::CreateWhenNeeded : OutputFile::Create;
  return CreateOutput(files_.OutPath, "List Open Error", listing_, create) &&
         (!job_.outputs.OptSbnList ||
          CreateOutput(files_.SbnPath, "Sbn List Open Error", sides_.difference_file)) &&
         (!job_.outputs.OptMrgSrc ||
          CreateOutput(files_.MrgPath, "Merge Source Open Error", sides_.merge_source));
}

bool PairCompare::CreateOutput(const NativePath& path, const char* title,
                               std::optional<OutputFile>& file,
                               Result<OutputFile> (*create)(const NativePath&)) {
  Result<OutputFile> created = create(path);
  if (!created.ok()) return FailToOpen(title, "OUTPUT:", created.error(), path);
  file = std::move(created.value());
  services_.platform().YieldBetweenBlocks(*file);
  return true;
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
  ListingBody body(options_, format_, old_ring, new_ring, *listing_, sides_, counts_);
  Difference difference(old_ring, new_ring, options_, body);

  WriteHeader(old_ring, new_ring);
  const bool ended = RunCompareLoop(difference);
  counts_.old_lines = old_ring.lines_read();
  counts_.new_lines = new_ring.lines_read();
  for (const auto& [ring, path] :
       {std::pair(&old_ring, &files_.OldPath), std::pair(&new_ring, &files_.NewPath)}) {
    if (ring->failure().ok() || ended_early_ == PairEnd::kStopped) continue;
    services_.ReportFileTrouble(*path, ring->failure().error());
    Fail();
  }
  if (ended_early_ == PairEnd::kFailed) {
    DiscardOutputs();
    return;
  }
  if (ended && LossesHideADifference()) {
    DiscardOutputs();
    return;
  }
  if (ended) {
    body.Close();
    WriteSummary();
    RemoveUnwantedOutputs();
  }
  CloseOutputs();
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
  write(*listing_, options_, format_, data);
  sides_.WriteHeading(FormatStamp(data.run_time), data.old_file.path, data.new_file.path);
}

void PairCompare::WriteSummary() {
  const auto write = options_.simple ? WriteSimpleSummary : WriteSummaryBox;
  write(*listing_, format_, counts_);
  sides_.WriteEndLine(counts_);
}

bool PairCompare::RunCompareLoop(Difference& difference) {
  if (services_.YieldAndAskStop()) return Stop();
  difference.Start();
  while (!difference.finished()) {
    difference.CompareStep();
    if (services_.YieldAndAskStop()) return Stop();
    if (OutputFailed()) return false;
  }
  if (job_.GuiMode) services_.UpdateProgress(kProgressWidth, 1);
  return !services_.YieldAndAskStop() || Stop();
}

bool PairCompare::OutputFailed() const {
  const auto failed = [](const std::optional<OutputFile>& file) {
    return file && !file->failure().ok();
  };
  return failed(listing_) || failed(sides_.difference_file) || failed(sides_.merge_source);
}

std::vector<OutputFile*> PairCompare::Outputs() {
  std::vector<OutputFile*> outputs;
  for (auto* file : {&listing_, &sides_.difference_file, &sides_.merge_source}) {
    if (*file) outputs.push_back(&**file);
  }
  return outputs;
}

void PairCompare::CloseOutputs() {
  for (OutputFile* file : Outputs()) {
    if (const Status failure = file->Close(); !failure.ok()) {
      services_.ReportFileTrouble(file->path(), failure.error());
      Fail();
    }
  }
  if (ended_early_ == PairEnd::kFailed) DiscardOutputs();
}

void PairCompare::DiscardOutputs() {
  for (OutputFile* file : Outputs()) file->Discard();
}

void PairCompare::RemoveUnwantedOutputs() {
  if (!options_.drop_unchanged_listing || counts_.total() > 0) return;
  if (sides_.difference_file) sides_.difference_file->Discard();
  sides_.difference_file.reset();
  listing_->Discard();
  listing_.reset();
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

void PairCompare::RemoveEarlierOutputs() {
  if (ended_early_ != PairEnd::kFailed && ended_early_ != PairEnd::kStopped) return;
  if (!listing_ && IsNobodyElses(files_.OutPath)) RemoveOutput(files_.OutPath);
  const NativePath& difference = files_.SbnPath;
  if (difference.empty() || sides_.difference_file) return;
  if (IsNobodyElses(difference)) RemoveOutput(difference);
}

bool PairCompare::IsNobodyElses(const NativePath& output) const {
  std::vector<NativePath> others;
  if (services_.csv().is_open()) others.push_back(services_.csv().path());
  return (has_claimed_ || !job_.claims.Holds(output)) &&
         RefuseOutput(output, inputs_, others, job_.ProtectedFiles).ok();
}

// A file that may not be written is not removed in its stead.
void PairCompare::RemoveOutput(const NativePath& path) {
  if (!MayWrite(path)) return;
  if (const Status failed = RemoveFile(path); !failed.ok()) {
    services_.ReportFileTrouble(path, failed.error());
  }
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
  pair.CompareFiles();
  pair.RemoveEarlierOutputs();
  return pair.MakeResultLine();
}

}  // namespace ledrix::modComp
