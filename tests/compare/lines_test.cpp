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
  struct Case {
    const char* settings;
    const char* line;
    const char* raw;
    const char* key;
  };
  const Case cases[] = {
      {"OptSpData=0", " a b  ", " a b  ", " a b  "},
      {"OptSpData=1", " a b　\t  ", " a b　\t", " a b　\t"},
      {"OptSpData=1|OptEDCol=4", "abc  fgh ", "abc  fgh", "abc"},
      {"OptSpData=0|OptEDCol=4", "abc  fgh ", "abc  fgh ", "abc "},
      {"OptSpData=0|OptSTCol=7|OptEDCol=9", "123456ABCdef", "123456ABCdef", "ABC"},
      {"OptSpData=0|OptSTCol=7", "12345", "12345", ""},
      {"OptSpData=2", " a b c ", " a b c", "abc"},
      {"OptSpData=2", "a　bc", "a　bc", "abc"},
      {"OptSpData=2|OptSTCol=3|OptEDCol=6", "ab c　def", "ab c　def", "c"},
      {"OptSpData=2", "メ@x", "メ@x", "メ@x"},
      {"OptUpperCase=0", "Select ｓｅｌ", "Select ｓｅｌ", "SELECT ＳＥＬ"},
      {"OptUpperCase=0", "αω абёя ⅰⅹ", "αω абёя ⅰⅹ", "ΑΩ АБЁЯ ⅠⅩ"},
      {"OptUpperCase=0", "ヂアギ表ｱ", "ヂアギ表ｱ", "ヂアギ表ｱ"},
      {"OptUpperCase=0|OptSpData=2", "a　b ", "a　b", "AB"},
      {"OptUpperCase=0|OptSpData=0", "a ", "a ", "A "},
  };
  for (const Case& c : cases) {
    TextArena arena;
    const std::string bytes = Sjis(c.line);
    const Line line = PrepareLine(Options(c.settings), SjisView::FromBytes(bytes), arena);
    EXPECT_EQ(Shown(line.raw), c.raw) << c.settings << " / " << c.line;
    EXPECT_EQ(Shown(line.key), c.key) << c.settings << " / " << c.line;
  }
}

TEST(PrepareLine, HalvesOfCutCharactersStayAsTheyAre) {
  struct Case {
    const char* settings;
    std::string line;
    std::string key;
  };
  // メ@ is 83 81 40: cut behind its first byte it must not read as a full-width space. ヂ is 83 61:
  // its second byte is no small letter.
  const Case cases[] = {
      {"OptSpData=2|OptSTCol=2", "\x83\x81@ x", "\x81@x"},
      {"OptSpData=2|OptEDCol=2", "a\x81\x40z", "a\x81"},
      {"OptUpperCase=0|OptSTCol=2", "\x83\x61q", "\x61Q"},
      {"OptUpperCase=0|OptEDCol=3", "aa\x82\x81", "AA\x82"},
      {"OptUpperCase=0|OptSpData=2",
       "\x81 a\xFF"
       "b\x80",
       "\x81"
       "A\xFF"
       "B\x80"},
      {"OptSpData=1", std::string("\0a\0 ", 4), std::string("\0a\0", 3)},
  };
  for (const Case& c : cases) {
    TextArena arena;
    const Line line = PrepareLine(Options(c.settings), SjisView::FromBytes(c.line), arena);
    EXPECT_EQ(line.key.bytes(), c.key) << c.settings;
  }
}

TEST(ExpandTabs, StopsCountBytes) {
  struct Case {
    int width;
    const char* text;
    const char* expanded;
  };
  const Case cases[] = {
      {8, "\tx", "        x"},   {8, "1234567\tx", "1234567 x"},
      {4, "a\tb", "a   b"},      {8, "a\tb", "a       b"},
      {8, "あ\tb", "あ      b"}, {4, "あい\tb", "あい    b"},
      {1, "\t\t", "  "},         {16, "a\t\tb", "a                               b"},
      {8, "no tab", "no tab"},
  };
  for (const Case& c : cases) {
    TextArena arena;
    const std::string text = Sjis(c.text);
    EXPECT_EQ(Shown(ExpandTabs(SjisView::FromBytes(text), c.width, arena)), c.expanded) << c.text;
    EXPECT_EQ(ExpandedSize(SjisView::FromBytes(text), c.width), Sjis(c.expanded).size()) << c.text;
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
