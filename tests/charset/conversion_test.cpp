#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <map>
#include <random>

#include "charset/japanese_codes.h"
#include "charset/line_converter.h"
#include "charset/line_cutter.h"
#include "charset/read_with_conversion.h"
#include "support/test_run.h"
#include "text/code_page_932.h"
#include "text/iconv_decoder.h"
#include "text/utf8.h"

namespace ledrix {
namespace {

using test::FileExists;
using test::TempFolder;
using test::TestRun;
using Texts = std::vector<std::string>;

std::string Convert(const char* charset, std::string_view bytes,
                    LinePosition position = LinePosition::kLater) {
  const auto converter = LineConverter::Make(charset);
  if (converter == nullptr) return "(no converter)";
  SjisText text;
  converter->Convert(bytes, position, text);
  return text.bytes();
}

// How one character is written in a code; empty when it does not exist there.
std::string InUtf8(char16_t c, int) {
  std::string text;
  AppendUtf8(text, c);
  return text;
}
std::string InUtf16(char16_t c, int) {
  return {static_cast<char>(c & 0xFF), static_cast<char>(c >> 8)};
}
// Row and cell of a Shift_JIS code, from 1 to 94; row 0 for a code outside the 94 rows.
std::pair<int, int> RowCell(int code) {
  const int lead = code >> 8;
  const int trail = code & 0xFF;
  if (lead < 0x81 || lead > 0xEF) return {0, 0};
  const int pair = lead <= 0x9F ? lead - 0x81 : lead - 0xC1;
  if (trail >= 0x9F) return {pair * 2 + 2, trail - 0x9E};
  return {pair * 2 + 1, trail - (trail > 0x7F ? 0x40 : 0x3F)};
}
std::string InEuc(char16_t, int code) {
  if (code < 0x80) return std::string(1, static_cast<char>(code));
  if (code >= 0xA1 && code <= 0xDF) return {'\x8E', static_cast<char>(code)};
  const auto [row, cell] = RowCell(code);
  if (row == 0) return {};
  return {static_cast<char>(row + 0xA0), static_cast<char>(cell + 0xA0)};
}
std::string InJis(char16_t, int code) {
  if (code < 0x80) return std::string(1, static_cast<char>(code));
  if (code >= 0xA1 && code <= 0xDF)
    return "\x1B(I" + std::string(1, static_cast<char>(code - 0x80));
  const auto [row, cell] = RowCell(code);
  if (row == 0) return {};
  return "\x1B$B" + std::string{static_cast<char>(row + 0x20), static_cast<char>(cell + 0x20)} +
         "\x1B(B";
}

// Every character of the code page, from each code in which it exists, ends at the code that
// Windows chooses for it.
TEST(LineConverter, WalksTheWholeCodePage) {
  struct Code {
    const char* charset;
    std::string (*write)(char16_t, int);
    int characters;
  };
  // 1,880 user-defined and 388 extension characters have no place in the 94 rows.
  const Code codes[] = {{"UTF-8", InUtf8, 9604 + 63},
                        {"UNICODE", InUtf16, 9604 + 63},
                        {"EUC-JP", InEuc, 9604 + 63 - 1880 - 388},
                        {"ISO-2022-JP", InJis, 9604 + 63 - 1880 - 388}};
  const CodePage932& table = CodePage932::Get();
  for (const Code& code : codes) {
    int characters = 0;
    for (int sjis = 0xA1; sjis < 0x10000; ++sjis) {
      const bool single = sjis <= 0xDF;
      if (!single && sjis < 0x8140) continue;
      const char16_t character = table.Decode(static_cast<uint16_t>(sjis));
      const std::string bytes = character == 0 ? "" : code.write(character, sjis);
      if (bytes.empty()) continue;
      ++characters;
      std::string utf8;
      AppendUtf8(utf8, character);
      ASSERT_EQ(Convert(code.charset, bytes), EncodeSjis(utf8).bytes())
          << code.charset << " " << std::hex << sjis;
    }
    EXPECT_EQ(characters, code.characters) << code.charset;
  }
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
    EXPECT_EQ(DecodeSjis(SjisView::FromBytes(Convert(row[0].c_str(), row[1]))), row[2])
        << row[0] << " " << row[2];
  }
  EXPECT_EQ(Convert("UTF-8", std::string("a\0b", 3)), std::string("a\0b", 3));
  EXPECT_EQ(Convert("shift_jis", "\x83 \xEE\xEF\xFA\x4A\xFD"), "? \xFA\x40\x87\x54\xFD");
}

TEST(LineConverter, AMarkAtTheStartOfTheFileIsNoText) {
  struct Case {
    const char* charset;
    std::string mark;
    std::string text;
  };
  const Case cases[] = {{"UTF-8", "\xEF\xBB\xBF", "a"},
                        {"UNICODE", "\xFF\xFE", std::string("a\0", 2)},
                        {"UTF-7", "+/v8-", "a"},
                        {"_autodetect", "\xEF\xBB\xBF", "a"}};
  for (const Case& c : cases) {
    EXPECT_EQ(Convert(c.charset, c.mark + c.text, LinePosition::kFirst), "a") << c.charset;
    EXPECT_EQ(Convert(c.charset, c.mark, LinePosition::kFirst), "") << c.charset;
    EXPECT_EQ(Convert(c.charset, c.text + c.mark, LinePosition::kFirst), "a?") << c.charset;
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

TEST(ReadWithConversion, MakesACopyOnlyWhereOneIsNeeded) {
  for (const auto& row : test::ReadTable("converted_copies.tsv")) {
    const TempFolder folder;
    TestRun run;
    run.options.CharsetCode = row[0];
    const NativePath path = folder.Write("f.txt", row[1]);
    Result<ReadInput> read = ReadWithConversion(run.services, path);
    ASSERT_TRUE(read.ok()) << row[0];
    EXPECT_EQ(read.value().shown_path, path + row[2]);
    ASSERT_EQ(read.value().copy.has_value(), !row[2].empty()) << row[0];
    if (row[2].empty()) continue;
    std::string copy(100, '\0');
    copy.resize(read.value().copy->Read(copy.data(), copy.size()).value());
    EXPECT_EQ(copy, row[3]) << row[0];
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

// A pair in UTF-8, compared in full-auto mode.
struct ConvertedPair : TestRun {
  TempFolder folder;
  ConvertedPair() {
    std::string bytes;
    for (int i = 0; i < 12000; ++i) bytes += "\xE3\x81\x82" + std::to_string(i) + "\n";
    request.OldPath = folder.Write("old.txt", bytes);
    request.NewPath = folder.Write("new.txt", bytes + "\xE3\x81\x84\n");
    test::SetModified(request.OldPath, test::kTestTime);
    options.CharsetCode = kFullAuto;
  }
  Texts Names() const {
    Texts names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
      names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
  }
};

TEST(ConvertedCompare, CallsTheCopiesByNamesThatNobodySees) {
  ConvertedPair run;
  run.job.outputs.OptCsvList = true;
  run.Run();
  EXPECT_EQ(run.front_end.results.at(1),
            "    UnMatch=    1 OLD=12000 NEW=12001 Rep=    0 Add=    1 Del=    0");
  EXPECT_EQ(run.Names(), (Texts{"Ledrix.CSV", "new.txt", "old.txt", "old_txt_COMP.TXT"}));
  const std::string header = test::ReadLines(run.folder.At("old_txt_COMP.TXT")).at(3);
  EXPECT_NE(header.find("/old.txt_UTF-8 "), std::string::npos) << header;
  EXPECT_NE(test::ReadLines(run.folder.At("Ledrix.CSV")).at(1).find("/new.txt_UTF-8,12001"),
            std::string::npos);
}

TEST(ConvertedCompare, RefusesAFileThatCannotBeConverted) {
  struct Case {
    void (*prepare)(ConvertedPair&);
    const char* message;
    Side side;
  };
  const Case cases[] = {
      {[](ConvertedPair& run) { run.request.OldPath = run.folder.At("none"); },
       "OLD Error: Chrcode ERR:ファイルが見つかりません", Side::kOld},
      {[](ConvertedPair& run) { run.request.NewPath = NativePath("/tmp"); },
       "NEW Error: Chrcode ERR:ファイルではなくフォルダです", Side::kNew},
      {[](ConvertedPair& run) { run.options.CharsetCode = "no-such-code"; },
       "OLD Error: Chrcode ERR:この文字コードは使用できません", Side::kOld},
  };
  for (const Case& c : cases) {
    ConvertedPair run;
    c.prepare(run);
    run.folder.Write("old_txt_COMP.TXT", "of an earlier run");
    run.folder.Write("none_COMP.TXT", "of an earlier run");
    run.Run();
    const NativePath& path = c.side == Side::kOld ? run.request.OldPath : run.request.NewPath;
    EXPECT_EQ(run.platform.messages,
              (Texts{c.message +
                     ("\r\n文字コード標準(無変換)でリトライしてください\r\n" + path.bytes())}));
    EXPECT_EQ(run.front_end.results.back(), "    エラー") << c.message;
    EXPECT_FALSE(FileExists(run.job.files.OutPath)) << c.message;
  }
}

// Any two codes of the sample pair give the same body and counts.
TEST(ConvertedCompare, TheSamplePairIsTheSameInEveryCode) {
  const std::string examples = LEDRIX_SOURCE_FOLDER "/examples/";
  const Texts sides = {"",
                       "codes/euc-jp/",
                       "codes/iso-2022-jp/",
                       "codes/utf-8/",
                       "codes/utf-8-bom/",
                       "codes/utf-16le/",
                       "codes/utf-7/"};
  const TempFolder folder;
  std::string body;
  for (size_t i = 0; i < sides.size(); ++i) {
    // Copies would be made beside the samples; these are ours.
    const auto copy = [&](const std::string& code, const char* side) {
      return folder.Write(std::string(side) + std::to_string(i),
                          test::ReadFile(NativePath(examples + code + side + "/KYUYO01.CBL")));
    };
    TestRun run;
    run.options.CharsetCode = kFullAuto;
    run.request.OldPath = copy(sides[i], "old");
    run.request.NewPath = copy(sides[sides.size() - 1 - i], "new");
    run.request.OutPath = folder.At("listing");
    run.Run();
    EXPECT_EQ(run.front_end.results.at(1),
              "    UnMatch=  218 OLD=  318 NEW=  338 Rep=   36 Add=  101 Del=   81");
    std::string listing = test::ReadFile(folder.At("listing"));
    listing.erase(0, size_t{5} * 188);  // the header above the ruler
    if (body.empty()) body = listing;
    EXPECT_TRUE(listing == body) << sides[i];
  }
}

}  // namespace
}  // namespace ledrix
