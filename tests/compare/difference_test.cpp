#include "compare/difference.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <random>

#include "compare/reference_difference.h"
#include "support/test_files.h"

namespace ledrix::modComp {
namespace {

using Texts = std::vector<std::string>;

class NoCounter : public LineCounter {
  void LineRead(int64_t /*number*/, size_t /*bytes*/) override {}
};

class DecisionRecorder : public DecisionWriter {
 public:
  void WriteUnchanged() override { decisions += '='; }
  void WriteChanged() override { decisions += '!'; }
  void WriteAdded() override { decisions += '+'; }
  void WriteDeleted() override { decisions += '-'; }
  bool TakesUnchangedRuns() const override { return true; }
  void WriteUnchangedRun(LineIndex lines) override {
    decisions.append(static_cast<size_t>(lines), '=');
    skipped += lines;
  }
  std::string decisions;
  LineIndex skipped = 0;  // lines that were never current
};

// A file in memory that is filled again and again.
class MemoryFile {
 public:
  MemoryFile() : descriptor_(memfd_create("lines", 0)) {}
  ~MemoryFile() { close(descriptor_); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  InputFile Fill(const Texts& lines) {
    std::string bytes;
    for (const std::string& line : lines) bytes += line + "\n";
    EXPECT_EQ(pwrite(descriptor_, bytes.data(), bytes.size(), 0), ssize_t(bytes.size()));
    EXPECT_EQ(ftruncate(descriptor_, static_cast<off_t>(bytes.size())), 0);
    auto file = InputFile::OpenRegular(NativePath("/proc/self/fd/" + std::to_string(descriptor_)));
    return std::move(file.value());
  }

 private:
  int descriptor_;
};

std::string Decisions(const Texts& old_lines, const Texts& new_lines, int window, int match,
                      const CompareTuning& tuning = {}) {
  static MemoryFile old_file;
  static MemoryFile new_file;
  OptionRecord record;
  record.OptBuff = static_cast<int16_t>(window);
  record.OptMatch = static_cast<int16_t>(match);
  record.OptSpData = 0;
  const CompareOptions options(record);
  NoCounter counter;
  LineRing old_ring(old_file.Fill(old_lines), options, counter, tuning);
  LineRing new_ring(new_file.Fill(new_lines), options, counter, tuning);
  DecisionRecorder recorder;
  Difference difference(old_ring, new_ring, options, recorder, tuning);
  difference.Start();
  while (!difference.finished()) difference.CompareStep();
  EXPECT_EQ(old_ring.lines_read(), LineIndex(old_lines.size()));
  EXPECT_EQ(new_ring.lines_read(), LineIndex(new_lines.size()));
  return recorder.decisions;
}

// One letter a line.
Texts Letters(std::string_view letters) {
  Texts lines;
  for (const char c : letters) lines.emplace_back(1, c);
  return lines;
}

TEST(Difference, DecidesAsTheTableSays) {
  for (const auto& row : test::ReadTable("decisions.tsv")) {
    const Texts old_lines = Letters(row[1]);
    const Texts new_lines = Letters(row[2]);
    const int window = std::stoi(row[3]);
    const int match = std::stoi(row[4]);
    EXPECT_EQ(Decisions(old_lines, new_lines, window, match), row[5]) << row[0];
    EXPECT_EQ(test::ReferenceDecisions(old_lines, new_lines, window, match), row[5])
        << row[0] << " (reference)";
  }
}

TEST(Difference, ALineOfTheByteFFIsALine) {
  const Texts with = {"a", "\xFF", "b", "\xFF"};
  EXPECT_EQ(Decisions(with, with, 1000, 5), "====");
  EXPECT_EQ(Decisions(with, Letters("ab"), 1000, 1), "=-=-");
  EXPECT_EQ(Decisions({"\xFF"}, {}, 1, 1), "-");
}

// A pair of files that have something in common.
struct RandomPair {
  Texts old_lines;
  Texts new_lines;
};

class PairGenerator {
 public:
  explicit PairGenerator(uint64_t seed) : random_(seed) {}

  int Number(int lowest, int highest) {
    return std::uniform_int_distribution<int>(lowest, highest)(random_);
  }

  RandomPair Make(int most_lines) {
    const int kinds = Number(0, 3) == 0 ? Number(1, 3) : Number(4, 200);
    RandomPair pair;
    for (int i = Number(0, most_lines); i > 0; --i) pair.old_lines.push_back(Line(kinds));
    if (Number(0, 4) == 0) {
      for (int i = Number(0, most_lines); i > 0; --i) pair.new_lines.push_back(Line(kinds));
      return pair;
    }
    pair.new_lines = pair.old_lines;
    for (int edits = Number(0, 6); edits > 0; --edits) Edit(pair.new_lines, kinds);
    return pair;
  }

 private:
  std::string Line(int kinds) {
    const int kind = Number(0, kinds);
    return kind == 0 ? "" : std::string(1 + kind % 3, 'x') + std::to_string(kind);
  }

  void Edit(Texts& lines, int kinds) {
    const auto at = lines.begin() + Number(0, static_cast<int>(lines.size()));
    const auto end = at + std::min<std::ptrdiff_t>(Number(0, 8), lines.end() - at);
    switch (Number(0, 3)) {
      case 0:
        lines.erase(at, end);
        break;
      case 1: {
        Texts block;
        for (int i = Number(1, 8); i > 0; --i) block.push_back(Line(kinds));
        lines.insert(at, block.begin(), block.end());
        break;
      }
      case 2:
        for (auto line = at; line != end; ++line) *line = Line(kinds);
        break;
      default: {  // a block moves to the front
        const Texts block(at, end);
        lines.erase(at, end);
        lines.insert(lines.begin(), block.begin(), block.end());
      }
    }
  }

  std::mt19937_64 random_;
};

// LEDRIX_RANDOM_PAIRS sets the number of pairs, LEDRIX_RANDOM_SEED another start.
int64_t FromEnvironment(const char* name, int64_t otherwise) {
  const char* text = std::getenv(name);
  return text == nullptr ? otherwise : std::atoll(text);
}

// Sanitizers make every pair some ten times slower.
#ifdef __SANITIZE_ADDRESS__
constexpr int64_t kPairs = 20'000;
#else
constexpr int64_t kPairs = 120'000;
#endif

// Mostly small numbers, now and then any.
int UpTo(PairGenerator& generator, int usual, int most) {
  return generator.Number(1, generator.Number(0, 7) == 0 ? most : usual);
}

// Every way to the decisions gets its turn: near distances and the index, skipped lines, lines
// across the ends of blocks.
CompareTuning RandomTuning(PairGenerator& generator) {
  CompareTuning tuning;
  if (generator.Number(0, 3) == 0) return tuning;
  tuning.near_lines = generator.Number(0, 1) == 0 ? 0 : generator.Number(1, 20);
  tuning.pairs_before_skip = generator.Number(1, 4);
  if (generator.Number(0, 1) == 0) {
    tuning.block_bytes = static_cast<size_t>(generator.Number(1, 100));
  }
  return tuning;
}

TEST(Difference, AgreesWithTheStepByStepSearchOnRandomPairs) {
  PairGenerator generator(static_cast<uint64_t>(FromEnvironment("LEDRIX_RANDOM_SEED", 20240309)));
  const int64_t pairs = FromEnvironment("LEDRIX_RANDOM_PAIRS", kPairs);
  for (int64_t i = 0; i < pairs; ++i) {
    const RandomPair pair = generator.Make(i % 100 == 0 ? 600 : 40);
    const int window = UpTo(generator, 60, 1000);
    const int match = UpTo(generator, 8, 99);
    const CompareTuning tuning = RandomTuning(generator);
    const std::string expected =
        test::ReferenceDecisions(pair.old_lines, pair.new_lines, window, match);
    ASSERT_EQ(Decisions(pair.old_lines, pair.new_lines, window, match, tuning), expected)
        << "pair " << i << ", window " << window << ", match " << match << ", near lines "
        << tuning.near_lines << ", skip after " << tuning.pairs_before_skip << ", blocks of "
        << tuning.block_bytes;
  }
}

}  // namespace
}  // namespace ledrix::modComp
