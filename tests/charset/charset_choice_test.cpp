#include "charset/charset_choice.h"

#include <gtest/gtest.h>

#include "charset/judge_code.h"
#include "support/test_files.h"
#include "text/ascii.h"

namespace ledrix {
namespace {

using test::TempFolder;

struct Converted {
  std::string text;  // with a | behind each line
  ConversionLoss loss;
};

// What becomes of a file under the option's value.
Converted Convert(const std::string& charset, const std::string& bytes) {
  const TempFolder folder;
  Result<InputFile> file = InputFile::Open(folder.Write("f", bytes));
  LineCutter cutter(file.value());
  const CharsetChoice choice = ChooseCharset(charset, cutter.Peek(modJudgeCode::kDecidingBytes));
  EXPECT_EQ(choice.charset, charset) << "the copy's path shows the name as given";
  EXPECT_FALSE(choice.NeedsNoConversion());
  const auto converter = choice.MakeConverter();
  Converted converted;
  SjisText text;
  for (std::string_view line; cutter.Next(choice.cutting, line);) {
    text.Clear();
    converter->Convert(line, converted.text.empty() ? LinePosition::kFirst : LinePosition::kLater,
                       text);
    converted.text += DecodeSjis(text) + "|";
  }
  converted.loss = converter->loss();
  return converted;
}

TEST(ChooseCharset, TakesOtherNamesAndCutsByNameMarkAndVerdict) {
  for (const auto& row : test::ReadTable("charset_names.tsv")) {
    for (const std::string& name : SplitAt(row[0], '|')) {
      EXPECT_EQ(Convert(name, row[1]).text, row[2]) << name;
    }
  }
}

TEST(ChooseCharset, OnlyTheExactNameMeansNoConversion) {
  EXPECT_TRUE(ChooseCharset("Shift_JIS", "abc").NeedsNoConversion());
  EXPECT_TRUE(ChooseCharset(kFullAuto, "no such thing\n").NeedsNoConversion());
}

TEST(ConversionLoss, TellsTextsApartThatReadTheSame) {
  for (const auto& row : test::ReadTable("lost_characters.tsv")) {
    const ConversionLoss one = Convert(row[1], row[2]).loss;
    const ConversionLoss other = Convert(row[3], row[4]).loss;
    EXPECT_EQ(one == other, row[5] == "yes") << row[0];
    EXPECT_NE(one.count() + other.count() > 0, row[0] == "nothing lost") << row[0];
  }
}

TEST(ConversionLoss, CountsAndNamesTheFirstLine) {
  for (const auto& row : test::ReadTable("lost_counts.tsv")) {
    const ConversionLoss loss = Convert(row[0], row[1]).loss;
    EXPECT_EQ(std::to_string(loss.count()), row[2]) << row[0] << " " << row[1];
    EXPECT_EQ(std::to_string(loss.first_line()), row[3]) << row[0] << " " << row[1];
  }
}

}  // namespace
}  // namespace ledrix
