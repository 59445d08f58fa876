#include "charset/judge_code.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>

#include "support/test_files.h"

namespace ledrix::modJudgeCode {
namespace {

using test::Repeat;

// Texts of the samples and of further sources in every code, with the scores that an independent
// program gave them.
TEST(JudgeCode, RatesRealTextsAsTheirTableSays) {
  std::istringstream table(test::ReadFile(NativePath(LEDRIX_DATA_FOLDER "/scores.tsv")));
  int files = 0;
  for (std::string line; std::getline(table, line); ++files) {
    std::istringstream fields(line);
    std::string path;
    std::string code;
    double jis = 0;
    double unicode = 0;
    double utf8 = 0;
    double utf7 = 0;
    double sjis = 0;
    double euc = 0;
    fields >> path >> code >> jis >> unicode >> utf8 >> utf7 >> sjis >> euc;
    const std::string bytes = test::ReadFile(NativePath(LEDRIX_SOURCE_FOLDER "/" + path));
    EXPECT_EQ(ScoreJIS(bytes), jis) << path;
    EXPECT_EQ(ScoreUnicode(bytes), unicode) << path;
    EXPECT_EQ(ScoreUTF8(bytes), utf8) << path;
    EXPECT_EQ(ScoreUTF7(bytes), utf7) << path;
    EXPECT_EQ(ScoreSJIS(bytes), sjis) << path;
    EXPECT_EQ(ScoreEUC(bytes), euc) << path;
    EXPECT_EQ(ToText(JudgeCode(bytes)), code) << path;
    EXPECT_EQ(JudgeCode(bytes.substr(0, kDecidingBytes)), JudgeCode(bytes)) << path;
  }
  EXPECT_EQ(files, 32);
}

TEST(JudgeCode, DecidesSignaturesTiesAndEdges) {
  const std::string nine_thousand = Repeat("Z9", 4999) + "Z";  // 9,999 bytes
  struct Case {
    const char* name;
    std::string bytes;
    const char* code;
  };
  const Case cases[] = {
      {"designation that begins with the last examined byte", nine_thousand + "\x1B(B", "JIS"},
      {"designation behind the examined bytes", nine_thousand + "Z\x1B(B", "SJIS"},
      {"half a designation at the end", nine_thousand + "\x1B(", "SJIS"},
      {"UTF-8 mark that begins with the last examined byte", nine_thousand + "\xEF\xBB\xBF",
       "UTF8"},
      {"half-width katakana between ASCII",
       Repeat("A\xB1"
              "4",
              33),
       "SJIS"},
      {"closed UTF-7 runs", Repeat("+MEIwRA-", 9), "UTF7"},
      {"the same runs never closed", Repeat("+MEIwRA 4", 9), "SJIS"},
  };
  for (const Case& c : cases) EXPECT_EQ(ToText(JudgeCode(c.bytes)), c.code) << c.name;
  for (const auto& row : test::ReadTable("judged.tsv")) {
    EXPECT_EQ(ToText(JudgeCode(row[1])), row[2]) << row[0];
  }
}

TEST(Scorers, CountAtTheEdgesOfWhatTheyExamine) {
  const std::string filler = Repeat("A", 9999);
  struct Case {
    const char* name;
    double (*scorer)(std::string_view);
    std::string bytes;
    double points;  // of 2 for each examined byte
  };
  const Case cases[] = {
      {"SJIS pair across the edge", ScoreSJIS, filler + "\x82\xA0", 9999 + 4},
      {"SJIS lead byte at the end", ScoreSJIS, filler + "\x82", 9999},
      {"SJIS lead bytes of extensions earn nothing", ScoreSJIS, "\xF0\x40\xFA\x40", 2},
      {"SJIS pair with a bad trail byte", ScoreSJIS, "\x82\x20", 1},
      {"EUC pair across the edge", ScoreEUC, filler + "\xA4\xA2", 9999 + 4},
      {"EUC triple", ScoreEUC, "\x8F\xB0\xA1", 6},
      {"EUC triple cut short", ScoreEUC, "\x8F\xB0", 0},
      {"EUC katakana out of range", ScoreEUC, "\x8E\xE0", 0},
      {"UTF-8 sequence of six bytes", ScoreUTF8, "\xFC\x84\x80\x80\x80\x80", 12},
      {"UTF-8 sequence across the edge", ScoreUTF8, filler + "\xE3\x81\x82zz", 9999 + 6},
      {"failed class is not tried as a shorter one", ScoreUTF8,
       "\xE3\x81"
       "A",
       1},
      {"stray continuation bytes", ScoreUTF8,
       "\x80\xBF"
       "A",
       1},
      {"UTF-7 plus sign", ScoreUTF7, "a+-b", 1 + 4 + 1},
      {"UTF-7 run", ScoreUTF7, "+MEIwRA-", 2 * 8},
      {"UTF-7 run with set low bits", ScoreUTF7, "+MEIwRB-", 0},
      {"UTF-7 run too short", ScoreUTF7, "+MA-", 0},
      {"UTF-7 run ended by another byte", ScoreUTF7, "+MEIwRA.x", 1},
      {"UTF-7 high bytes", ScoreUTF7, "\x80\xFFz", 1},
      {"UTF-16 lone last byte", ScoreUnicode, "a b", 4},
      {"UTF-16 forbidden high byte discards all", ScoreUnicode, std::string("a\0b\x34", 4), 0},
      {"JIS high bytes", ScoreJIS, "a\x80\x1B", 1},
  };
  for (const Case& c : cases) {
    const double examined = static_cast<double>(std::min<size_t>(c.bytes.size(), 10000));
    EXPECT_EQ(c.scorer(c.bytes), 100.0 * c.points / (2.0 * examined)) << c.name;
  }
}

}  // namespace
}  // namespace ledrix::modJudgeCode
