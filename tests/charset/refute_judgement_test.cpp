#include "charset/refute_judgement.h"

#include <gtest/gtest.h>

#include "support/test_files.h"

namespace ledrix::modJudgeCode {
namespace {

using test::Repeat;
using test::Sjis;

// UTF-16 of a text of ASCII, high byte first or last.
std::string BigEndian(std::string_view ascii) {
  std::string text;
  for (const char c : ascii) text += {'\0', c};
  return text;
}
std::string LittleEndian(std::string_view ascii) {
  return BigEndian(ascii).substr(1) + '\0';
}

TEST(FollowedVerdict, GivesWayWhereTheBytesRefuteIt) {
  const std::string lower = Repeat("no such thing\n", 20);
  const std::string ten_thousand = Repeat("no such thing ", 714) + "abc\n";  // bytes
  const std::string euc = Repeat("\xA4\xA2\xB4\xC1\xBB\xFA\n", 9);
  const std::string utf8 = Repeat("漢字かな\n", 9);
  const std::string kanji = "\x71\x67\xAC\x4E";  // 東京 in little-endian UTF-16
  struct Case {
    const char* name;
    std::string bytes;
    const char* judged;
    const char* followed;
  };
  const Case cases[] = {
      {"no bytes", "", "SJIS", "SJIS"},
      {"lower-case ASCII", lower, "UNICODE", "SJIS"},
      {"the same with a character of UTF-8", lower + "ß\n\n", "UNICODE", "UTF8"},
      {"the same with a byte 00", lower + std::string(2, '\0'), "UNICODE", "SJIS"},
      {"the same with an invalid byte", lower + "\xFA\n", "UNICODE", "UNICODE"},
      {"the same behind a mark", "\xFF\xFE" + lower, "UNICODE", "UNICODE"},
      {"kanji", Repeat(kanji, 9), "UNICODE", "UNICODE"},
      {"little-endian", LittleEndian("a\r\n0 b"), "UNICODE", "UNICODE"},
      {"big-endian", BigEndian("a\r\n0 b"), "UNICODE", "SJIS"},
      {"big-endian digits alone", BigEndian("0000"), "UNICODE", "UNICODE"},
      {"zeros on either side", LittleEndian("ab") + BigEndian("cd"), "UNICODE", "SJIS"},
      {"more on the little-endian side", LittleEndian("abc") + BigEndian("d"), "UNICODE",
       "UNICODE"},
      {"full-width spaces", LittleEndian("a") + Repeat(std::string("\0\x30", 2), 9), "UNICODE",
       "UNICODE"},
      {"valid up to a sequence that the rated end cuts", ten_thousand.substr(1) + "\xD8\xB8\n",
       "UNICODE", "UTF8"},
      {"the same where the file ends", ten_thousand.substr(1) + "\xD8", "UNICODE", "UNICODE"},
      {"half-width katakana", Repeat(Sjis("ﾔﾏﾀﾞ ﾊﾅｺ\n"), 9), "EUC", "SJIS"},
      {"katakana that read as EUC", Repeat(Sjis("ﾔﾏﾀﾛ\n"), 9), "EUC", "EUC"},
      {"EUC, one in ten invalid", Repeat("\xA4\xA2", 9) + "\x80", "EUC", "EUC"},
      {"EUC, two in nineteen invalid, valid in nothing",
       Repeat("\xA4\xA2", 17) + "\x80"
                                "4\x80",
       "EUC", "EUC"},
      {"UTF-8, overlong forms", utf8 + Repeat("\xC0\xB1", 9), "UTF8", "SJIS"},
      {"the same, valid in nothing", utf8 + Repeat("\xC0\xB1", 9) + "\xFF", "UTF8", "UTF8"},
      {"UTF-8, valid in Shift_JIS alone", Repeat("\xE0\xB1\xA1\xC4\xA1\xC0\xA1 ", 9), "UTF8",
       "SJIS"},
      {"UTF-7", Repeat("+MEIwRA-4 ", 9), "UTF7", "UTF7"},
      {"UTF-7 with a byte of 80", Repeat("+MEIwRA-", 9) + "\xB1", "UTF7", "SJIS"},
      {"UTF-7, bits left over", Repeat("+MEIwRA-", 9) + "+MEIwRB-", "UTF7", "SJIS"},
      {"UTF-7, half a pair", Repeat("+MEIwRA-", 9) + "+2Ew-", "UTF7", "SJIS"},
      {"UTF-7, a pair", Repeat("+MEIwRA-", 9) + "+2D3eAA-", "UTF7", "UTF7"},
      {"UTF-7, a bare plus sign", Repeat("+MEIwRA-", 9) + "+!", "UTF7", "SJIS"},
      {"UTF-7 of plus signs", Repeat("4+-5", 9), "UTF7", "SJIS"},
      {"UTF-7 of ASCII in runs", Repeat("+AEEAQg-", 9), "UTF7", "SJIS"},
      {"UTF-7, a run cut by the rated end", Repeat("+MEIwRA-4", 1111) + "+MEI", "UTF7", "UTF7"},
      {"JIS", "\x1B$B$\"\x1B(B", "JIS", "JIS"},
      {"JIS with katakana of eight bits", "\x1B(B\xB1", "JIS", "SJIS"},
      {"JIS with what is nothing", "\x1B(B\xFF", "JIS", "JIS"},
      {"EUC with a designation", "\x1B(B" + euc + "\xA4\xFD", "JIS", "EUC"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(ToText(JudgeCode(c.bytes)), c.judged) << c.name;
    EXPECT_EQ(ToText(FollowedVerdict(c.bytes)), c.followed) << c.name;
  }
}

}  // namespace
}  // namespace ledrix::modJudgeCode
