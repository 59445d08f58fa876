// The lines of a compare, its decisions, and what is written of them.
#include <algorithm>
#include <functional>

#include "charset/read_with_conversion.h"
#include "compare/difference.h"
#include "compare/listing_body.h"
#include "compare/pair_driver.h"
#include "compare/reference_difference.h"
#include "support.h"
#include "targets.h"

namespace ledrix::fuzz {
namespace {

using namespace modComp;
using Texts = std::vector<std::string>;

class NoCounter : public LineCounter {
  void LineRead(int64_t /*number*/, size_t /*bytes*/) override {}
};

// Records each decision and hands it on.
class Recorder : public DecisionWriter {
 public:
  explicit Recorder(DecisionWriter& next) : next_(next) {}
  void WriteUnchanged() override { decisions += '=', next_.WriteUnchanged(); }
  void WriteChanged() override { decisions += '!', next_.WriteChanged(); }
  void WriteAdded() override { decisions += '+', next_.WriteAdded(); }
  void WriteDeleted() override { decisions += '-', next_.WriteDeleted(); }
  bool TakesUnchangedRuns() const override { return next_.TakesUnchangedRuns(); }
  void WriteUnchangedRun(LineIndex lines) override {
    decisions.append(static_cast<size_t>(lines), '=');
    next_.WriteUnchangedRun(lines);
  }
  std::string decisions;

 private:
  DecisionWriter& next_;
};

// A text as it stands, or one in which each byte tells of a short line, so that lines meet again.
std::string TakeText(Input& input) {
  constexpr size_t kMostLines = 500;  // the step-by-step search takes its time
  const bool stands = input.Flag();
  const std::string_view piece = input.Piece();
  if (stands) return std::string(piece.substr(0, kMostLines));
  std::string text;
  for (const char c : piece.substr(0, kMostLines)) text += std::string(c % 4 & 3, 'x') + c + "\n";
  return text;
}

Texts CutLines(std::string_view text) {
  Texts lines;
  while (!text.empty()) {
    const size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    if (end < text.size() && line.ends_with('\r')) line.remove_suffix(1);
    lines.emplace_back(line);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

Texts KeysOf(std::string_view text, const CompareOptions& options) {
  Texts keys = CutLines(text);
  TextArena arena;
  for (std::string& key : keys) {
    SjisView line = SjisView::FromBytes(key);
    if (options.expand_tabs) line = ExpandTabs(line, options.tab_width, arena);
    key = std::string(PrepareLine(options, line, arena).key.bytes());
  }
  return keys;
}

// The key of a line, character by character.
std::string PlainKey(const CompareOptions& options, SjisView raw) {
  std::string key;
  const auto end = static_cast<size_t>(options.last_column);
  for (size_t at = 0; at < raw.size(); at += SjisCharSize(raw, at)) {
    const SjisView whole = raw.From(at).First(SjisCharSize(raw, at));
    std::string part;
    for (size_t i = at; i < at + whole.size(); ++i) {
      const bool inside = i + 1 >= static_cast<size_t>(options.first_column) && i < end;
      if (inside) part += static_cast<char>(raw.At(i));
    }
    if (part.size() == whole.size()) {
      const bool is_space = part == " " || part == "\x81\x40";
      if (is_space && options.spaces == SpaceRule::kIgnoreAll) continue;
      unsigned code = 0;
      for (size_t i = 0; i < whole.size(); ++i) code = code << 8 | whole.At(i);
      SjisText upper;
      if (options.ignore_case) upper.AppendCode(UpperCaseCode(code));
      if (options.ignore_case) part = upper.bytes();
    }
    key += part;
  }
  while (options.spaces != SpaceRule::kCompare && key.ends_with(' ')) key.pop_back();
  return key;
}

// Every line of a listing ends in CR LF and, but for a vertical text, has a listing's width.
void CheckListing(const std::string& listing, const CompareOptions& options,
                  const ListingFormat& format) {
  Require(listing.ends_with("\r\n"), "a listing ends in CR LF");
  if (options.vertical) return;
  for (size_t at = 0; at < listing.size(); at += format.listing_width() + 2) {
    Require(listing.compare(at + format.listing_width(), 2, "\r\n") == 0,
            "every row has the width of the listing");
  }
}

// A file as a compare reads it: its keys, and what its conversion lost.
struct ReadSide {
  Texts keys;
  ConversionLoss loss;
};

ReadSide ReadAlone(QuietRun& run, const NativePath& path) {
  Result<ReadInput> read = ReadWithConversion(run.services, path);
  Require(read.ok(), "a file can be read under every charset");
  std::string text = ReadFile(path);
  if (read.value().copy) {
    text.resize(4 * text.size() + 64);
    text.resize(read.value().copy->Read(text.data(), text.size()).value());
  }
  return {KeysOf(text, CompareOptions(run.options)), read.value().loss};
}

CompareTuning TakeTuning(Input& input) {
  CompareTuning tuning;
  tuning.near_lines = input.Number(0, 64, 64);
  tuning.pairs_before_skip = input.Number(1, 16, 16);
  const int block = input.Number(0, 255, 0);
  if (block > 0) tuning.block_bytes = static_cast<size_t>(block);
  return tuning;
}

}  // namespace

void PrepareTarget(std::string_view bytes) {
  Input input(bytes);
  const CompareOptions options(TakeOptions(input));
  const SjisView text = SjisView::FromBytes(input.Rest());
  std::string expanded;
  for (const char c : text.bytes()) {
    const size_t tab = static_cast<size_t>(options.tab_width);
    if (c == '\t') {
      expanded.append(tab - expanded.size() % tab, ' ');
    } else {
      expanded += c;
    }
  }
  TextArena arena;
  const SjisView line = ExpandTabs(text, options.tab_width, arena);
  Require(line.bytes() == expanded, "tabs reach the next stop");
  Require(ExpandedSize(text, options.tab_width) == expanded.size(), "the size is foreseen");
  const Line prepared = PrepareLine(options, line, arena);
  Require(line.bytes().starts_with(prepared.raw.bytes()), "what is shown begins the line");
  Require(TrimRight(line) == TrimRight(prepared.raw), "nothing but spaces is not shown");
  Require(prepared.key.bytes() == PlainKey(options, prepared.raw), "the key follows the options");
  Require(PrepareLine(options, prepared.raw, arena).key == prepared.key, "and is of what is shown");
}

void CompareTarget(std::string_view bytes) {
  Input input(bytes);
  const OptionRecord record = TakeOptions(input);
  const CompareOptions options(record);
  const CompareTuning tuning = TakeTuning(input);
  const bool merges = input.Flag();
  const std::string old_text = TakeText(input);
  const std::string new_text = TakeText(input);
  static const MemoryFile old_file;
  static const MemoryFile new_file;
  static const MemoryFile listing_file;
  static const MemoryFile merge_file;
  static const MemoryFile difference_file;

  NoCounter counter;
  LineRing old_ring(old_file.Open(old_text), options, counter, tuning);
  LineRing new_ring(new_file.Open(new_text), options, counter, tuning);
  const ListingFormat format(options);
  OutputFile listing = std::move(OutputFile::Create(listing_file.path()).value());
  SideOutputs sides(options, MergeMarks::kWritten);
  sides.difference_file = std::move(OutputFile::Create(difference_file.path()).value());
  if (merges) sides.merge_source = std::move(OutputFile::Create(merge_file.path()).value());
  CompareCounts counts;
  ListingBody body(options, format, old_ring, new_ring, listing, sides, counts);
  Recorder recorder(body);
  Difference difference(old_ring, new_ring, options, recorder, tuning);
  difference.Start();
  while (!difference.finished()) difference.CompareStep();
  body.Close();
  Require(listing.Close().ok() && sides.difference_file->Close().ok(), "outputs are written");

  const std::string& decisions = recorder.decisions;
  Require(
      decisions == test::ReferenceDecisions(KeysOf(old_text, options), KeysOf(new_text, options),
                                            options.window_lines, options.match_lines),
      "the search decides as the step-by-step one");
  const auto count = [&decisions](char c) { return std::ranges::count(decisions, c); };
  Require(
      counts.changed == count('!') && counts.added == count('+') && counts.deleted == count('-'),
      "what is decided is counted");
  CheckListing(ReadFile(listing_file.path()), options, format);
  if (!merges) return;
  Require(sides.merge_source->Close().ok() &&
              std::ranges::count(ReadFile(merge_file.path()), '\n') == std::ssize(decisions),
          "the merge source holds every line once");
}

void PairTarget(std::string_view bytes) {
  Input input(bytes);
  QuietRun run;
  run.options = TakeOptions(input);
  run.options.OptNoCngNoOut = 0;  // the two files are as old as each other
  if (input.Flag()) run.options.CharsetCode = TakeCharset(input);
  const JobRequest request{JobKind::kComp, WorkFolder() + "old", WorkFolder() + "new",
                           WorkFolder() + "listing"};
  WriteFile(request.OldPath, input.Piece());
  WriteFile(request.NewPath, input.Rest());
  BeginJob(run.job, request);
  run.job.files.SbnPath = WorkFolder() + "difference";
  run.job.files.MrgPath = WorkFolder() + "merge";
  const PairEnd end = ComparePair(run.services);

  const ReadSide old_side = ReadAlone(run, request.OldPath);
  const ReadSide new_side = ReadAlone(run, request.NewPath);
  if (old_side.keys != new_side.keys) {
    Require(end == PairEnd::kChanged, "what differs is told");
  } else if (old_side.loss == new_side.loss) {
    Require(end == PairEnd::kUnchanged, "what is the same is told");
  } else {
    Require(end == PairEnd::kFailed, "what differs only where it was lost is no result");
  }
  const bool drops = end == PairEnd::kUnchanged && IsOn(run.options.NoCompList);
  Require(PathExists(request.OutPath) == (end != PairEnd::kFailed && !drops),
          "a listing stands when there is a result");
}

}  // namespace ledrix::fuzz
