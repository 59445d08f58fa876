#include <gtest/gtest.h>

#include <random>

#include "compare/prepare_line.h"
#include "platform/line_reader.h"
#include "support/test_files.h"
#include "support/test_run.h"
#include "text/code_page_932.h"

namespace ledrix::modComp {
namespace {

using test::Sjis;
using test::TempFolder;

std::string Shown(SjisView text) {
  return DecodeSjis(text);
}

CompareOptions Options(std::string_view settings) {
  OptionRecord record;
  test::ApplySettings(record, settings);
  return CompareOptions(record);
}

TEST(PrepareLine, RawTextAndKeyFollowTheOptions) {
  for (const auto& row : test::ReadTable("prepared_lines.tsv")) {
    TextArena arena;
    const std::string bytes = Sjis(row[1]);
    const Line line = PrepareLine(Options(row[0]), SjisView::FromBytes(bytes), arena);
    EXPECT_EQ(Shown(line.raw), row[2]) << row[0] << " / " << row[1];
    EXPECT_EQ(Shown(line.key), row[3]) << row[0] << " / " << row[1];
  }
}

TEST(PrepareLine, HalvesOfCutCharactersStayAsTheyAre) {
  // メ@ is 83 81 40: cut behind its first byte it must not read as a full-width space. ヂ is 83 61:
  // its second byte is no small letter.
  for (const auto& row : test::ReadTable("cut_characters.tsv")) {
    TextArena arena;
    const Line line = PrepareLine(Options(row[0]), SjisView::FromBytes(row[1]), arena);
    EXPECT_EQ(line.key.bytes(), row[2]) << row[0];
  }
}

TEST(ExpandTabs, StopsCountBytes) {
  for (const auto& row : test::ReadTable("tabs.tsv")) {
    TextArena arena;
    const std::string text = Sjis(row[1]);
    const int width = std::stoi(row[0]);
    EXPECT_EQ(Shown(ExpandTabs(SjisView::FromBytes(text), width, arena)), row[2]) << row[1];
    EXPECT_EQ(ExpandedSize(SjisView::FromBytes(text), width), Sjis(row[2]).size()) << row[1];
  }
}

std::vector<std::string> ReadAll(const NativePath& path, LineIndex kept_lines) {
  LineReader reader(std::move(InputFile::Open(path).value()));
  std::vector<std::string> lines;
  std::vector<SjisView> kept;
  for (SjisView line; reader.Next(reader.lines_read() - kept_lines, line);) {
    lines.emplace_back(line.bytes());
    kept.push_back(line);
    // A line that is still wanted must not have moved or been overwritten.
    const size_t oldest = kept.size() > size_t(kept_lines) ? kept.size() - size_t(kept_lines) : 0;
    for (size_t i = oldest; i < kept.size(); i += 1 + kept.size() / 8) {
      EXPECT_EQ(kept[i].bytes(), lines[i]);
    }
  }
  EXPECT_EQ(reader.lines_read(), LineIndex(lines.size()));
  EXPECT_TRUE(reader.failure().ok());
  return lines;
}

TEST(LineReader, CutsLinesAtLineFeeds) {
  struct Case {
    std::string bytes;
    std::vector<std::string> lines;
  };
  const Case cases[] = {
      {"", {}},
      {"\n", {""}},
      {"\r\n", {""}},
      {"a", {"a"}},
      {"a\r", {"a\r"}},
      {"a\r\nb\nc", {"a", "b", "c"}},
      {"a\rb\r\r\n\n", {"a\rb\r", ""}},
      {std::string("\0\n\xFF", 3), {std::string("\0", 1), "\xFF"}},
  };
  const TempFolder folder;
  for (const Case& c : cases) {
    EXPECT_EQ(ReadAll(folder.Write("f", c.bytes), 0), c.lines);
  }
}

TEST(LineReader, LinesOfEveryLengthSurviveTheBlocks) {
  const TempFolder folder;
  std::mt19937 random(7);
  for (const int longest : {3, 200, 70000, 600000}) {
    std::vector<std::string> lines;
    std::string bytes;
    while (bytes.size() < 2'000'000) {
      const size_t size = std::uniform_int_distribution<size_t>(0, longest)(random);
      lines.emplace_back(size, static_cast<char>('a' + lines.size() % 26));
      bytes += lines.back() + (lines.size() % 2 == 0 ? "\r\n" : "\n");
    }
    EXPECT_TRUE(ReadAll(folder.Write("f", bytes), 50) == lines) << longest;
  }
}

}  // namespace
}  // namespace ledrix::modComp
