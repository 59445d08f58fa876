#include "charset/sure_judgement.h"

#include <gtest/gtest.h>

#include <random>

#include "charset/sure_reading.h"
#include "support/test_files.h"
#include "text/sjis_text.h"

namespace ledrix::modJudgeCode {
namespace {

SureJudge Judged(std::string_view text, size_t cut = 0) {
  SureJudge judge;
  judge.Add(text.substr(0, cut));
  judge.Add(text.substr(cut));
  judge.Finish();
  return judge;
}

std::string Told(const SureVerdict& verdict) {
  return std::string(ToText(verdict.code)) + " " + ToText(verdict.found_by) + " " +
         WhyText(verdict);
}

TEST(SureJudgement, TellsTheCodeAndWhy) {
  const std::string english(20000, 'x');
  const struct {
    std::string text;
    const char* told;
  } cases[] = {
      {"", "ASCII 唯一 ASCII の文字だけです"},
      {"MOVE A TO B.\r\n", "ASCII 唯一 ASCII の文字だけです"},
      {english + "\n\x8D\xB7\x95\xAA\n", "SJIS 唯一 行 2: 8D B7 は Shift_JIS だけにあります"},
      {"\xCB\xDC\xCA\xB8\xA4\xCF\xA4\xB3\xA4\xB3\n",
       "EUC 重み 文字の並びは EUC-JP が Shift_JIS より自然です"},
      {"a\n\xA4\xE7\xA4\xE7.\n", "EUC 唯一 行 2: A4 E7 は EUC-JP だけにあります"},
      {"\xB6\xC5\xB6\xC5 1\n\xCF\xDD\xCA\xDE\xDD\n",
       "SJIS 唯一 行 2: CF は Shift_JIS だけにあります"},
      {"\x1B$B$\"\x1B(B\n", "JIS 唯一 行 1: 1B 24 42 は ISO-2022-JP だけにあります"},
      {"差分\n", "UTF8 唯一 行 1: E5 88 86 は UTF-8 だけにあります"},
      {"\xEF\xBB\xBFx", "UTF8 印 行 1: EF BB BF は UTF-8 の印です"},
      {std::string("A\0\x42\x30\n\0", 6), "UTF16LE 唯一 行 1: 41 00 は UTF-16LE だけにあります"},
      {std::string("\0A\x30\x42\0\n", 6), "UTF16BE 唯一 行 1: 00 41 は UTF-16BE だけにあります"},
      {std::string("\xFF\xFE\x3D\xD8\0\xDE", 6), "UTF16LE 印 行 1: FF FE は UTF-16LE の印です"},
      {"+ZeVnLIqe- x\n", "UTF7 重み 文字の並びは UTF-7 が ASCII より自然です"},
      {"a+b; c+-d\n", "ASCII 唯一 ASCII の文字だけです"},
      {"\x82\xA0\xFF\n", "不明 不明 行 1: FF 0A はどの文字コードにもありません"},
      {"\xB9\xB2\xD8\xC2\n", "不明 不明 どちらとも判定できません（Shift_JIS か EUC-JP）"},
  };
  for (const auto& [text, told] : cases) {
    EXPECT_EQ(Told(Judged(text).Verdict()), told);
    for (size_t cut = 1; cut < std::min<size_t>(text.size(), 40); ++cut) {
      EXPECT_EQ(Told(Judged(text, cut).Verdict()).substr(0, 8), std::string(told).substr(0, 8))
          << told << " cut at " << cut;
    }
  }
}

TEST(SureJudgement, LetsAPairVoteTogether) {
  const std::string open = "\xB9\xB2\xD8\xC2\n";
  const struct {
    std::string partner;
    const char* told;
  } cases[] = {
      {"\xA4\xE7\xA4\xE7.\n", "EUC 相手 組の相手が EUC-JP です"},
      {"\x8D\xB7\x95\xAA\n", "SJIS 相手 組の相手が Shift_JIS です"},
      {"ASCII\n", "不明 不明 どちらとも判定できません（Shift_JIS か EUC-JP）"},
      {"\xCB\xDC\xCA\xB8\n", "EUC 相手 組の相手が EUC-JP です"},
      {"\xB9\xB2\xD8\xC2 \xB9\xB2\xD8\xC2\n", "SJIS 相手 組の相手が Shift_JIS です"},
  };
  for (const auto& [partner, told] : cases) {
    EXPECT_EQ(Told(JudgePair(Judged(open), Judged(partner)).old_side), told);
    EXPECT_EQ(Told(JudgePair(Judged(partner), Judged(open)).new_side), told);
  }
}

// What may follow a "+" in programs, queries, addresses and expressions.
TEST(SureJudgement, NeverTakesProgramTextForUtf7) {
  std::mt19937 random(7);
  const char* const pieces[] = {"a+b",        "i++;",
                                "x += y",     "'%' + name + '%'",
                                "[0-9]+",     "q=a+b",
                                "(\\w+)\\s",  "1.5e+10",
                                "C++",        "+81-3-",
                                "+nsw ",      "s/a+/b/g",
                                "A+(B+C)+-D", "https://x/?a+b+c",
                                "HTML+UL4"};
  std::string text;
  for (int line = 0; line < 100000; ++line) {
    for (int word = 0; word < 3; ++word) text += std::string(pieces[random() % 15]) + " ";
    text += "\n";
    if (line % 1000 != 0) continue;
    EXPECT_NE(Judged(text.substr(text.rfind('\n', text.size() - 2) + 1)).Verdict().code,
              SureCode::kUtf7);
  }
  EXPECT_EQ(Judged(text).Verdict().code, SureCode::kAscii);
}

}  // namespace
}  // namespace ledrix::modJudgeCode
