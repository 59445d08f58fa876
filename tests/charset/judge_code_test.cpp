#include "charset/judge_code.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "charset/refute_judgement.h"
#include "support/test_files.h"

namespace ledrix::modJudgeCode {
namespace {

// Texts of the samples and of further sources in every code, with the scores that an independent
// program gave them.
TEST(JudgeCode, RatesRealTextsAsTheirTableSays) {
  std::istringstream table(test::ReadFile(NativePath(LEDRIX_DATA_FOLDER "/scores.tsv")));
  int files = 0;
  for (std::string path, code; table >> path >> code; ++files) {
    const std::string bytes = test::ReadFile(NativePath(LEDRIX_SOURCE_FOLDER "/" + path));
    for (const auto score : {ScoreJIS, ScoreUnicode, ScoreUTF8, ScoreUTF7, ScoreSJIS, ScoreEUC}) {
      double expected = 0;
      table >> expected;
      EXPECT_EQ(score(bytes), expected) << path;
    }
    EXPECT_EQ(ToText(JudgeCode(bytes)), code) << path;
    EXPECT_EQ(JudgeCode(bytes.substr(0, kDecidingBytes)), JudgeCode(bytes)) << path;
  }
  EXPECT_EQ(files, 32);
}

TEST(JudgeCode, DecidesSignaturesTiesAndEdges) {
  for (const auto& row : test::ReadTable("judged.tsv")) {
    EXPECT_EQ(ToText(JudgeCode(row[1])), row[2]) << row[0];
  }
}

TEST(Scorers, CountAtTheEdgesOfWhatTheyExamine) {
  const std::map<std::string, double (*)(std::string_view)> scorers = {
      {"JIS", ScoreJIS},   {"UNICODE", ScoreUnicode}, {"UTF8", ScoreUTF8},
      {"UTF7", ScoreUTF7}, {"SJIS", ScoreSJIS},       {"EUC", ScoreEUC}};
  for (const auto& row : test::ReadTable("scorers.tsv")) {
    const auto examined = static_cast<double>(std::min<size_t>(row[2].size(), 10000));
    EXPECT_EQ(scorers.at(row[1])(row[2]), 100.0 * std::stod(row[3]) / (2.0 * examined))
        << row[1] << ": " << row[0];
  }
}

TEST(FollowedVerdict, GivesWayWhereTheBytesRefuteIt) {
  for (const auto& row : test::ReadTable("followed_verdicts.tsv")) {
    EXPECT_EQ(ToText(JudgeCode(row[1])), row[2]) << row[0];
    EXPECT_EQ(ToText(FollowedVerdict(row[1])), row[3]) << row[0];
  }
}

}  // namespace
}  // namespace ledrix::modJudgeCode
