#include "charset/charset_choice.h"

#include <gtest/gtest.h>

#include "charset/judge_code.h"
#include "support/test_files.h"

namespace ledrix {
namespace {

using test::Sjis;
using test::TempFolder;
using Texts = std::vector<std::string>;

// The lines of a file's copy, converted under the option's value.
Texts Read(const std::string& charset_code, const std::string& bytes) {
  const TempFolder folder;
  Result<InputFile> file = InputFile::Open(folder.Write("f", bytes));
  LineCutter cutter(file.value());
  const CharsetChoice choice =
      ChooseCharset(charset_code, cutter.Peek(modJudgeCode::kDecidingBytes));
  EXPECT_EQ(choice.charset, charset_code) << "the copy's path shows the name as given";
  EXPECT_FALSE(choice.NeedsNoConversion());
  const auto converter = choice.MakeConverter();
  if (converter == nullptr) return {"(no converter)"};
  Texts lines;
  SjisText text;
  for (std::string_view line; cutter.Next(choice.cutting, line);) {
    text.Clear();
    converter->Convert(line, lines.empty() ? LinePosition::kFirst : LinePosition::kLater, text);
    lines.push_back(DecodeSjis(text));
  }
  return lines;
}

TEST(ChooseCharset, TakesOtherNamesForTheFamilys) {
  struct Case {
    Texts names;
    std::string bytes;
  };
  const Case cases[] = {
      {{"SJIS", "sjis", "MS_Kanji", "CP932", "cp932", "Windows-31J", "WINDOWS-31J", "csShiftJIS",
        "x-sjis", "Shift-JIS", "shift_jis", "MS932", "csWindows31J", " SJIS ", "IBM943"},
       Sjis("①髙～4")},
      {{"eucJP", "EUC_JP", "EUC-JP-MS", "eucJP-win", "x-euc-jp", "CP51932", "ujis"},
       "\xAD\xA1\x8F\xF4\xFB\xA1\xC1"
       "4"},
      {{"csISO2022JP", "JIS", "iso-2022-jp-1", "CP50220", "cp50221"},
       "\x1B$B-!\x1B$(Dt{\x1B$B!A\x1B(B4"},
      {{"utf8", "UTF_8", "CP65001"}, "①髙〜4"},
      {{"utf7", "csUTF7"}, "+JGCa2TAc-4"},
      {{"utf16le", "UTF16", "UTF-16", "ucs-2", "UCS-2LE", "Unicode"},
       std::string("\x60\x24\xD9\x9A\x1C\x30"
                   "4\0",
                   8)},
  };
  for (const Case& c : cases) {
    for (const std::string& name : c.names) EXPECT_EQ(Read(name, c.bytes), Texts{"①髙～4"}) << name;
  }
}

TEST(ChooseCharset, CutsUtf16ByNameMarkAndVerdict) {
  const std::string little("a\0\r\0\n\0\x42\x30\n\0", 10);
  const std::string big("\0a\0\r\0\n\x30\x42\0\n", 10);
  const Texts lines = {"a", "あ"};
  struct Case {
    const char* charset;
    std::string bytes;
    Texts lines;
  };
  const Case cases[] = {
      {"UTF-16", little, lines},
      {"UTF-16", "\xFF\xFE" + little, lines},
      {"UTF-16", "\xFE\xFF" + big, lines},
      {"UNICODE", "\xFE\xFF" + big, lines},
      {"UCS-2", "\xFE\xFF" + big, lines},
      {"UTF-16BE", big, lines},
      {"UTF16BE", "\xFE\xFF" + big, lines},
      {"utf-16be", big, lines},
      {"UTF-16LE", "\xFF\xFE" + little, lines},
      {"UTF-16BE", big + std::string("\0b\0", 3), {"a", "あ", "b?"}},
      {"UTF-16BE", std::string("\x4E\0\x0A\x05\0\r\0z", 8), {"一?", "z"}},
      {"UTF-16LE", std::string("4\0\n\0\x42", 5), {"4", "?"}},
      {"UTF-8", "abc\r\nd", {"abc", "d"}},
      {"EUC-JP", std::string("a\0\n\0b\0", 6), {std::string("a\0", 2), std::string("b\0", 2)}},
      {"koi8-r", "abc\r\nd", {"abc", "d"}},
  };
  for (const Case& c : cases) EXPECT_EQ(Read(c.charset, c.bytes), c.lines) << c.charset;
}

TEST(ChooseCharset, OnlyTheExactNameMeansNoConversion) {
  EXPECT_TRUE(ChooseCharset("Shift_JIS", "abc").NeedsNoConversion());
  EXPECT_TRUE(ChooseCharset(kFullAuto, "no such thing\n").NeedsNoConversion());
  for (const char* name : {"shift_jis", "SJIS", "Shift-JIS", "CP932"}) {
    EXPECT_FALSE(ChooseCharset(name, "abc").NeedsNoConversion()) << name;
  }
}

}  // namespace
}  // namespace ledrix
