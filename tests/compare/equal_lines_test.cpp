// Whole listings, once as fast as they can be made and once with every line read, cut and compared
// by itself: both must hold the same bytes.
#include <gtest/gtest.h>

#include <random>

#include "compare/difference.h"
#include "compare/listing_body.h"
#include "support/test_files.h"
#include "support/test_run.h"
#include "text/byte_search.h"

namespace ledrix::modComp {
namespace {

using test::TempFolder;

// Sums up what a progress bar would be told.
class ByteCounter : public LineCounter {
 public:
  void LineRead(int64_t number, size_t bytes) override { LinesRead(number, 1, bytes); }
  void LinesRead(int64_t /*number*/, int64_t lines, size_t bytes) override {
    lines_ += lines;
    bytes_ += bytes;
  }
  int64_t lines() const { return lines_; }
  size_t bytes() const { return bytes_; }

 private:
  int64_t lines_ = 0;
  size_t bytes_ = 0;
};

// Hands every decision on, but wants each unchanged pair by itself.
class EachPair : public DecisionWriter {
 public:
  explicit EachPair(DecisionWriter& writer) : writer_(writer) {}
  void WriteUnchanged() override { writer_.WriteUnchanged(); }
  void WriteChanged() override { writer_.WriteChanged(); }
  void WriteAdded() override { writer_.WriteAdded(); }
  void WriteDeleted() override { writer_.WriteDeleted(); }

 private:
  DecisionWriter& writer_;
};

struct Outcome {
  std::string listing;
  std::string difference_file;
  CompareCounts counts;
  int64_t steps = 0;  // decisions made one by one
  int64_t lines_told = 0;
  size_t bytes_told = 0;

  friend bool operator==(const Outcome& a, const Outcome& b) {
    const auto counts_of = [](const CompareCounts& c) {
      return std::array{c.old_lines, c.new_lines, c.changed, c.added, c.deleted};
    };
    return a.listing == b.listing && a.difference_file == b.difference_file &&
           counts_of(a.counts) == counts_of(b.counts) && a.lines_told == b.lines_told &&
           a.bytes_told == b.bytes_told;
  }
};

// One pair of files and every way to compare it.
class ComparedPair {
 public:
  ComparedPair(std::string_view old_bytes, std::string_view new_bytes, std::string_view settings)
      : old_path_(folder_.Write("old", old_bytes)), new_path_(folder_.Write("new", new_bytes)) {
    OptionRecord record;
    test::ApplySettings(record, settings);
    options_.emplace(record);
  }

  Outcome LineByLine() { return Run({.near_lines = 0}, /*each_pair=*/true); }
  Outcome Fast(const CompareTuning& tuning) { return Run(tuning, /*each_pair=*/false); }

 private:
  Outcome Run(const CompareTuning& tuning, bool each_pair) {
    Outcome outcome;
    ByteCounter counter;
    const ListingFormat format(*options_);
    LineRing old_ring(std::move(InputFile::Open(old_path_).value()), *options_, counter, tuning);
    LineRing new_ring(std::move(InputFile::Open(new_path_).value()), *options_, counter, tuning);
    OutputFile listing = std::move(OutputFile::Create(folder_.At("listing")).value());
    SideOutputs sides(*options_, MergeMarks::kNone);
    sides.difference_file = std::move(OutputFile::Create(folder_.At("difference")).value());
    ListingBody body(*options_, format, old_ring, new_ring, listing, sides, outcome.counts);
    EachPair each(body);
    Difference difference(old_ring, new_ring, *options_,
                          each_pair ? static_cast<DecisionWriter&>(each) : body, tuning);
    difference.Start();
    for (; !difference.finished(); ++outcome.steps) difference.CompareStep();
    body.Close();
    EXPECT_TRUE(listing.Close().ok());
    EXPECT_TRUE(sides.difference_file->Close().ok());
    outcome.listing = test::ReadFile(folder_.At("listing"));
    outcome.difference_file = test::ReadFile(folder_.At("difference"));
    outcome.counts.old_lines = old_ring.lines_read();
    outcome.counts.new_lines = new_ring.lines_read();
    outcome.lines_told = counter.lines();
    outcome.bytes_told = counter.bytes();
    return outcome;
  }

  const TempFolder folder_;
  const NativePath old_path_;
  const NativePath new_path_;
  std::optional<CompareOptions> options_;
};

std::string Lines(int first, int last, std::string_view end = "\r\n") {
  std::string bytes;
  for (int i = first; i <= last; ++i) {
    bytes += "line " + std::to_string(i) + std::string(static_cast<size_t>(i % 40), '.');
    bytes += end;
  }
  return bytes;
}

// A file as the table of cases describes it.
std::string Pieces(std::string_view description) {
  std::string bytes;
  for (const std::string& piece : SplitAt(description, '+')) {
    const size_t range = piece.find("..");
    const size_t times = piece.find('*');
    const size_t colon = piece.find(':');
    if (range != std::string::npos) {
      bytes += Lines(std::stoi(piece), std::stoi(piece.substr(range + 2)),
                     colon == std::string::npos ? "\r\n" : piece.substr(colon + 1));
    } else if (times != std::string::npos) {
      bytes += test::Repeat(piece.substr(times + 1), std::stoul(piece));
    } else {
      bytes += piece;
    }
  }
  return bytes;
}

TEST(ByteSearch, FindsTheFirstDifferenceAndTheLastByte) {
  const std::string bytes(9000, 'x');
  for (const size_t size : {0, 1, 63, 64, 65, 4095, 4096, 4097, 4160, 8191, 8999}) {
    std::string other = bytes;
    other[size] = 'y';
    EXPECT_EQ(CommonPrefixSize(bytes, other), size);
    EXPECT_EQ(CommonPrefixSize(bytes.substr(0, size), bytes), size);
    EXPECT_EQ(FindLastByte(other, 'y'), size);
    EXPECT_EQ(FindLastByte(std::string_view(other).substr(0, size), 'y'), std::string::npos);
  }
  EXPECT_EQ(FindLastByte("yxyx", 'y'), 2u);
}

TEST(EqualLines, AreSkippedWithoutATrace) {
  for (const auto& row : test::ReadTable("equal_lines.tsv")) {
    ComparedPair pair(Pieces(row[1]), Pieces(row[2]), row[3]);
    const Outcome expected = pair.LineByLine();
    for (const size_t block : {size_t{1}, size_t{7}, size_t{64}, size_t{1000}, size_t{1} << 18}) {
      EXPECT_TRUE(pair.Fast({.block_bytes = block}) == expected)
          << row[0] << ", blocks of " << block;
    }
    const Outcome fast = pair.Fast({});
    EXPECT_EQ(fast.steps < expected.steps / 2, row[4] == "yes")
        << row[0] << ": " << fast.steps << " of " << expected.steps;
  }
}

// Files of lines that hold what the rules look at, with edits far apart.
class FileGenerator {
 public:
  explicit FileGenerator(uint64_t seed) : random_(seed) {}

  int Number(int lowest, int highest) {
    return std::uniform_int_distribution<int>(lowest, highest)(random_);
  }

  std::string Settings() {
    std::string settings = "OptSpData=" + std::to_string(Number(0, 2));
    for (const char* flag : {"OptTABtoSPACE", "OptUpperCase", "LineNoAdd", "OptOutLineVar"}) {
      settings += "|" + std::string(flag) + "=" + std::to_string(Number(0, 3) == 0 ? 1 : 0);
    }
    if (Number(0, 3) == 0) settings += "|OptSTCol=3|OptEDCol=8";
    settings += "|OptLstout=" + std::to_string(Number(1, Number(0, 3) == 0 ? 99 : 5));
    settings += "|OptBuff=" + std::to_string(Number(1, Number(0, 3) == 0 ? 1000 : 40));
    settings += "|OptMatch=" + std::to_string(Number(1, 6));
    return settings;
  }

  std::pair<std::string, std::string> Pair() {
    std::string old_bytes;
    std::string new_bytes;
    const bool same_ends = Number(0, 5) != 0;
    for (int stretches = Number(1, 5); stretches > 0; --stretches) {
      for (int lines = Number(0, 150); lines > 0; --lines) {
        const std::string text = Text();
        const std::string end = End();
        old_bytes += text;
        old_bytes += end;
        new_bytes += text;
        new_bytes += same_ends ? end : End();
      }
      for (int lines = Number(0, 6); lines > 0; --lines) old_bytes += Text() + End();
      for (int lines = Number(0, 6); lines > 0; --lines) new_bytes += Text() + End();
    }
    if (Number(0, 2) == 0) old_bytes += "tail";
    if (Number(0, 2) == 0) new_bytes += "tail";
    return {old_bytes, new_bytes};
  }

 private:
  std::string Text() {
    static constexpr const char* kPieces[] = {"a",    "B",  "b",        " ",        "  ",
                                              "\t",   "\r", "\x83\x5C", "\x81\x40", "\x82\xA0",
                                              "\xFF", "12", "xyz",      "\x81"};
    std::string text;
    for (int pieces = Number(0, 12); pieces > 0; --pieces) text += kPieces[Number(0, 13)];
    return text;
  }
  std::string End() { return Number(0, 3) == 0 ? "\n" : "\r\n"; }

  std::mt19937_64 random_;
};

TEST(EqualLines, LeaveNoTraceInRandomFiles) {
  FileGenerator generator(932);
  int64_t steps = 0;
  int64_t slow_steps = 0;
  for (int i = 0; i < 300; ++i) {
    const auto [old_bytes, new_bytes] = generator.Pair();
    const std::string settings = generator.Settings();
    ComparedPair pair(old_bytes, new_bytes, settings);
    const Outcome expected = pair.LineByLine();
    CompareTuning tuning;
    tuning.block_bytes = static_cast<size_t>(generator.Number(1, generator.Number(1, 3000)));
    tuning.near_lines = generator.Number(0, 64);
    tuning.pairs_before_skip = generator.Number(1, 20);
    const Outcome fast = pair.Fast(tuning);
    ASSERT_TRUE(fast == expected) << "pair " << i << ", " << settings << ", blocks of "
                                  << tuning.block_bytes << ", near lines " << tuning.near_lines
                                  << ", skip after " << tuning.pairs_before_skip;
    steps += fast.steps;
    slow_steps += expected.steps;
  }
  // The comparison would be worth nothing if hardly a pair were skipped.
  EXPECT_LT(steps, slow_steps * 3 / 4);
}

}  // namespace
}  // namespace ledrix::modComp
