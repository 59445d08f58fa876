#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <map>
#include <random>

#include "charset/japanese_codes.h"
#include "charset/line_converter.h"
#include "charset/line_cutter.h"
#include "charset/read_with_conversion.h"
#include "support/test_run.h"
#include "text/code_page_932.h"
#include "text/iconv_decoder.h"

namespace ledrix {
namespace {

using test::TempFolder;
using test::TestRun;
using namespace std::string_literals;
using Texts = std::vector<std::string>;

std::string ConvertLine(const char* charset, std::string_view bytes,
                        LinePosition position = LinePosition::kLater) {
  const auto converter = LineConverter::Make(charset);
  if (converter == nullptr) return "(no converter)";
  SjisText text;
  converter->Convert(bytes, position, text);
  return text.bytes();
}

TEST(JapaneseCodes, TheSupplementarySetAgreesWithTheSystemTable) {
  const auto decoder = IconvDecoder::Open("EUC-JP-MS");
  ASSERT_NE(decoder, nullptr);
  int characters = 0;
  for (int row = 1; row <= kRows; ++row) {
    for (int cell = 1; cell <= kCells; ++cell) {
      const char code[] = {'\x8F', static_cast<char>(row + 0xA0), static_cast<char>(cell + 0xA0)};
      std::u32string expected;
      decoder->Begin();
      const bool exists = decoder->Decode({code, sizeof code}, expected).invalid == 0;
      characters += exists ? 1 : 0;
      ASSERT_EQ(CharacterOfSupplementaryRowCell(row, cell), exists ? expected.at(0) : U'\0')
          << row << " " << cell;
    }
  }
  EXPECT_EQ(characters, 7113);
}

TEST(LineConverter, ReplacesWhatIsInvalidAndNothingElse) {
  for (const auto& row : test::ReadTable("converted_lines.tsv")) {
    EXPECT_EQ(DecodeSjis(SjisView::FromBytes(ConvertLine(row[0].c_str(), row[1]))), row[2])
        << row[0] << " " << row[2];
  }
  EXPECT_EQ(ConvertLine("shift_jis", "\x83 \xEE\xEF\xFA\x4A\xFD"), "? \xFA\x40\x87\x54\xFD");
}

TEST(LineConverter, AMarkAtTheStartOfTheFileIsNoText) {
  for (const auto& [charset, mark, text] :
       {std::tuple("UTF-8", "\xEF\xBB\xBF", "a"s), std::tuple("UNICODE", "\xFF\xFE", "a\0"s),
        std::tuple("UTF-7", "+/v8-", "a"s), std::tuple("_autodetect", "\xEF\xBB\xBF", "a"s)}) {
    EXPECT_EQ(ConvertLine(charset, mark + text, LinePosition::kFirst), "a") << charset;
    EXPECT_EQ(ConvertLine(charset, mark, LinePosition::kFirst), "") << charset;
    EXPECT_EQ(ConvertLine(charset, text + mark, LinePosition::kFirst), "a?") << charset;
  }
}

TEST(IsCharsetAvailable, RefusesWhatCannotBeConverted) {
  for (const char* name : {"utf-8", "EUC-JP", "_autodetect", "UNICODE", "UTF-7", "koi8-r"}) {
    EXPECT_TRUE(IsCharsetAvailable(name)) << name;
  }
  for (const char* name :
       {"", "  ", "no-such-code", "UTF-8/x", "UTF-8//IGNORE", "../UTF-8", "!!!", "　", "UTF-8\n"}) {
    EXPECT_FALSE(IsCharsetAvailable(name)) << name;
  }
}

Texts Cut(const NativePath& path, LineCutting cutting) {
  Result<InputFile> file = InputFile::Open(path);
  LineCutter cutter(file.value());
  Texts lines;
  for (std::string_view line; cutter.Next(cutting, line);) lines.emplace_back(line);
  EXPECT_TRUE(cutter.failure().ok());
  return lines;
}

std::string Wide(std::string_view ascii) {
  std::string text;
  for (const char c : ascii) text += {c, '\0'};
  return text;
}

// The other byte order.
std::string Swapped(std::string text) {
  for (size_t i = 0; i + 1 < text.size(); i += 2) std::swap(text[i], text[i + 1]);
  return text;
}

TEST(LineCutter, CutsAtEveryKindOfLineEnd) {
  const TempFolder folder;
  const std::map<std::string, LineCutting> cuttings = {{"bytes", LineCutting::kBytes},
                                                       {"UTF-16LE", LineCutting::kUtf16Le},
                                                       {"UTF-16BE", LineCutting::kUtf16Be}};
  for (const auto& row : test::ReadTable("cut_lines.tsv")) {
    std::string lines;
    for (const std::string& line : Cut(folder.Write("f", row[1]), cuttings.at(row[0])))
      lines += line + "|";
    EXPECT_EQ(lines, row[2]) << row[0] << " " << row[1];
  }
}

TEST(LineCutter, HalfALineBeforeAReadErrorIsNone) {
  int ends[2];
  ASSERT_EQ(pipe2(ends, O_NONBLOCK), 0);
  ASSERT_EQ(write(ends[1], "half", 4), 4);
  Result<InputFile> file = InputFile::OverDescriptor(FileDescriptor(ends[0]));
  LineCutter cutter(file.value());
  std::string_view line;
  EXPECT_FALSE(cutter.Next(LineCutting::kBytes, line)) << line;
  EXPECT_EQ(cutter.failure().error().system_number, EAGAIN);
  close(ends[1]);
}

TEST(LineCutter, LinesOfEveryLengthSurviveTheBlocks) {
  const TempFolder folder;
  std::mt19937 random(11);
  const char* const ends[] = {"\r\n", "\n", "\r"};
  for (const int longest : {2, 300, 500000}) {
    for (const bool mixed : {false, true}) {
      Texts lines;
      std::string bytes;
      while (bytes.size() < 1'500'000) {
        lines.emplace_back(1 + random() % longest, static_cast<char>('a' + lines.size() % 26));
        bytes += lines.back() + ends[mixed ? random() % 3 : 2];
      }
      EXPECT_TRUE(Cut(folder.Write("f", bytes), LineCutting::kBytes) == lines) << longest;
      for (std::string& line : lines) line = Wide(line);
      EXPECT_TRUE(Cut(folder.Write("f", Wide(bytes)), LineCutting::kUtf16Le) == lines) << longest;
      for (std::string& line : lines) line = Swapped(line);
      EXPECT_TRUE(Cut(folder.Write("f", Swapped(Wide(bytes))), LineCutting::kUtf16Be) == lines)
          << longest;
    }
  }
}

// The bytes of the copy; nothing when the file itself is read.
std::string Copied(ReadInput& read) {
  if (!read.copy) return {};
  std::string copy(100'000, '\0');
  copy.resize(read.copy->Read(copy.data(), copy.size()).value());
  return copy;
}

TEST(ReadWithConversion, MakesACopyOnlyWhereOneIsNeeded) {
  for (const auto& row : test::ReadTable("converted_copies.tsv")) {
    const TempFolder folder;
    TestRun run;
    run.options.CharsetCode = row[0];
    const NativePath path = folder.Write("f.txt", row[1]);
    Result<ReadInput> read = ReadWithConversion(run.services, path);
    EXPECT_EQ(read.value().shown_path, path + row[2]);
    EXPECT_EQ(read.value().copy.has_value(), !row[2].empty()) << row[0];
    EXPECT_EQ(Copied(read.value()), row[2].empty() ? "" : row[3]) << row[0];
  }
}

// Every character of the code page, from each code in which it exists, ends at the code that
// Windows chooses for it. 1,880 user-defined and 388 extension characters have no place in the 94
// rows of EUC-JP and ISO-2022-JP.
TEST(ReadWithConversion, WalksTheWholeCodePage) {
  const std::string data = LEDRIX_DATA_FOLDER "/code_page/";
  for (const auto& [charset, expected] :
       {std::pair("UTF-8", "UTF-8.sjis"), std::pair("UNICODE", "UTF-8.sjis"),
        std::pair("EUC-JP", "EUC-JP.sjis"), std::pair("ISO-2022-JP", "EUC-JP.sjis")}) {
    const TempFolder folder;
    TestRun run;
    run.options.CharsetCode = charset;
    const NativePath path = folder.Write("f", test::ReadFile(NativePath(data + charset)));
    Result<ReadInput> read = ReadWithConversion(run.services, path);
    EXPECT_TRUE(Copied(read.value()) == test::ReadFile(NativePath(data + expected))) << charset;
    EXPECT_EQ(read.value().loss.count(), 0u) << charset;
  }
}

TEST(ReadWithConversion, TellsHowFarItIs) {
  const TempFolder folder;
  TestRun run;
  run.options.CharsetCode = kFullAuto;
  std::string bytes;
  for (int i = 0; i < 20001; ++i)
    bytes +=
        "\xE3\x81\x82"
        "4\n";
  run.services.SetBarText("before");
  ASSERT_TRUE(ReadWithConversion(run.services, folder.Write("f", bytes)).ok());
  EXPECT_EQ(run.front_end.bar_texts,
            (Texts{"before", "文字コード判定中", "before", "UTF-8 変換中", "UTF-8 変換中 ･･･ 50%",
                   "UTF-8 変換中 ･･･ 100%", "UTF-8 変換中 ･･･ 100%", ""}));
}

}  // namespace
}  // namespace ledrix
