#include "compare/pair_driver.h"

#include <new>
#include <optional>
#include <utility>

#include "charset/read_with_conversion.h"
#include "compare/difference.h"
#include "compare/listing_body.h"
#include "compare/listing_frame.h"
#include "compare/pair_outputs.h"
#include "compare/rule_watch.h"
#include "run/listing_format.h"
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

// One pair on its way through the driver.
class PairCompare {
 public:
  explicit PairCompare(RunServices& services)
      : services_(services),
        job_(services.job()),
        files_(job_.files),
        labels_{NativePath(job_.request.labels[Side::kOld]),
                NativePath(job_.request.labels[Side::kNew])},
        old_side_{ShownPath(Side::kOld), std::nullopt, std::nullopt, {}},
        new_side_{ShownPath(Side::kNew), std::nullopt, std::nullopt, {}},
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
  // Tells the witness, if there is one, how the pair ended.
  void TellWitness(PairEnd end);

 private:
  // A file that was judged as a whole, and how it is to be read; nothing when it is judged as it
  // is read.
  struct JudgedInput {
    std::optional<JudgedFile> file;
    CharsetChoice choice;
    std::string found_by;
  };

  // Tells why an output cannot be written, if so, and ends the pair; true when it can be.
  bool OpenOutputs(std::optional<OutputFailure> failed);
  bool HaveSameContents();
  // The skip rule.
  bool Skips();
  // Both sides together, when the option wants that.
  bool JudgeInputs();
  void TellOpen(const NativePath& path, const modJudgeCode::SureVerdict& verdict);
  bool ConvertInput(Side which, ReadInput& side, const char* title);
  // Tells why an input cannot be judged or converted and ends the pair; always false.
  bool FailToConvert(const Error& error, const NativePath& path, const char* title);
  std::optional<InputFile> OpenInput(Side which, ReadInput& side, const char* title);
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
  const NativePath& PathOf(Side side) const {
    return side == Side::kOld ? files_.OldPath : files_.NewPath;
  }
  const NativePath& ShownPath(Side side) const {
    if (job_.rerun) return job_.rerun->shown[side].path;
    return HasLabel(side) ? labels_[side] : PathOf(side);
  }
  bool HasLabel(Side side) const { return !labels_[side].empty(); }
  // Where what is read of a side goes as well, if anybody wants to know.
  Sha256* HashOf(Side side) {
    return services_.witness() != nullptr ? &hashes_[IndexOf(side)] : nullptr;
  }
  ListedFile Listed(Side side, const ReadInput& input, const FileInfo& info);
  InputNote NoteOf(Side side, const ReadInput& input, PairEnd end) const;

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
  const PerSide<NativePath> labels_;  // what the user calls the sides, or empty
  ReadInput old_side_;                // what is read
  ReadInput new_side_;
  JudgedInput judged_[2];  // old, new
  Sha256 hashes_[2];       // of what was read, for the witness
  PairNote note_;
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
  if (!JudgeInputs() || !ConvertInput(Side::kOld, old_side_, "OLD Error") ||
      !ConvertInput(Side::kNew, new_side_, "NEW Error")) {
    return;
  }
  std::optional<InputFile> old_file = OpenInput(Side::kOld, old_side_, "OLD Open Error");
  if (!old_file) return;
  std::optional<InputFile> new_file = OpenInput(Side::kNew, new_side_, "NEW Open Error");
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
  // A witness is told what the files hold.
  const bool by_contents = job_.skip_rule == SkipRule::kSameContents || services_.witness();
  if (by_contents && !HaveSameContents()) return false;
  old_side_.seen = a;
  new_side_.seen = b;
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
  if (services_.witness() != nullptr) {
    old_file.value().HashInto(hashes_[0]);
    new_file.value().HashInto(hashes_[1]);
  }
  const bool same = SameContents(old_file.value(), new_file.value()) &&
                    CheckUnchanged(files_.OldPath, old_file.value().info()).ok() &&
                    CheckUnchanged(files_.NewPath, new_file.value().info()).ok();
  if (!same) {
    for (Sha256& hash : hashes_) hash.Reset();
  }
  return same;
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
  judged_[0].found_by = modJudgeCode::ToText(verdicts.old_side.found_by);
  judged_[1].found_by = modJudgeCode::ToText(verdicts.new_side.found_by);
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

bool PairCompare::ConvertInput(Side which, ReadInput& side, const char* title) {
  services_.platform().YieldToUi();
  const NativePath& path = PathOf(which);
  JudgedInput& judged = judged_[IndexOf(which)];
  Sha256* const hash = HashOf(which);
  Result<ReadInput> read =
      judged.file ? ReadJudged(services_, path, std::move(*judged.file), judged.choice, hash)
                  : ReadWithConversion(services_, path, hash);
  if (!read.ok()) return FailToConvert(read.error(), path, title);
  side = std::move(read.value());
  if (judged.file) side.found_by = judged.found_by;
  if (job_.rerun || HasLabel(which)) side.shown_path = ShownPath(which);
  if (hash != nullptr && !side.is_hashed) hash->Reset();
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

std::optional<InputFile> PairCompare::OpenInput(Side which, ReadInput& side, const char* title) {
  const NativePath& path = PathOf(which);
  Sha256* const hash = side.is_hashed ? nullptr : HashOf(which);
  if (side.copy) {
    services_.platform().YieldBetweenBlocks(*side.copy);
    if (hash != nullptr) side.copy->HashInto(*hash);
    return std::exchange(side.copy, std::nullopt);
  }
  Result<InputFile> file = both_regular_ ? InputFile::OpenRegular(path) : InputFile::Open(path);
  if (file.ok()) {
    services_.platform().YieldBetweenBlocks(file.value());
    if (hash != nullptr) file.value().HashInto(*hash);
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
  std::optional<RuleWatch> watch;
  if (services_.witness() != nullptr) {
    watch.emplace(body, old_ring, new_ring, options_, old_side_.loss.folded(),
                  new_side_.loss.folded(), note_.by_rule);
  }
  DecisionWriter& writer = watch ? static_cast<DecisionWriter&>(*watch) : body;
  Difference difference(old_ring, new_ring, options_, writer);

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
  const HeaderData data{Listed(Side::kOld, old_side_, old_ring.info()),
                        Listed(Side::kNew, new_side_, new_ring.info()), services_.platform().Now()};
  note_.run_time = data.run_time;
  note_.has_run_time = true;
  const auto write = options_.simple ? WriteSimpleHeader : WriteHeaderBox;
  write(outputs_.listing(), options_, format_, data);
  outputs_.sides().WriteHeading(FormatStamp(data.run_time), data.old_file.path, data.new_file.path);
}

ListedFile PairCompare::Listed(Side side, const ReadInput& input, const FileInfo& info) {
  ShownFile& shown = note_.inputs[side].shown;
  shown = job_.rerun ? job_.rerun->shown[side]
                     : ShownFile{input.shown_path, FormatStamp(ToLocalTime(info.modified))};
  return {PathToSjis(shown.path), SjisText::FromBytes(shown.stamp)};
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

InputNote PairCompare::NoteOf(Side side, const ReadInput& input, PairEnd end) const {
  InputNote note = note_.inputs[side];
  note.path = PathOf(side);
  if (note.shown.path.empty()) note.shown.path = input.shown_path;
  const Sha256& hash = hashes_[IndexOf(side)];
  note.size = hash.size();
  if (input.seen) {
    note.kind = input.seen->kind;
    note.modified = input.seen->modified;
  }
  const bool was_read =
      end == PairEnd::kChanged || end == PairEnd::kUnchanged || end == PairEnd::kSkipped;
  if (was_read) note.sha256 = hash.Digest();
  note.charset = input.charset;
  note.found_by = input.found_by;
  note.lost = input.loss.count();
  return note;
}

void PairCompare::TellWitness(PairEnd end) {
  if (services_.witness() == nullptr) return;
  note_.inputs[Side::kOld] = NoteOf(Side::kOld, old_side_, end);
  note_.inputs[Side::kNew] = NoteOf(Side::kNew, new_side_, end);
  note_.end = end;
  note_.counts = counts_;
  if (end == PairEnd::kChanged || end == PairEnd::kUnchanged) note_.outputs = outputs_.Written();
  services_.witness()->PairEnded(note_);
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
  const PairEnd end = pair.MakeResultLine();
  pair.TellWitness(end);
  return end;
}

}  // namespace ledrix::modComp
