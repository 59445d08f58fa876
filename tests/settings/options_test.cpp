#include <gtest/gtest.h>

#include <limits>
#include <set>

#include "settings/compare_options.h"
#include "settings/help_texts.h"
#include "settings/option_draft.h"
#include "settings/option_record.h"
#include "support/test_files.h"
#include "text/ascii.h"
#include "text/leading_number.h"

namespace ledrix {
namespace {

TEST(LeadingNumber, ReadsWhatATextBeginsWith) {
  for (const auto& row : test::ReadTable("leading_numbers.tsv")) {
    EXPECT_EQ(std::to_string(LeadingInteger(row[0])), row[1]) << row[0];
  }
  EXPECT_EQ(LeadingInteger(std::string(10000, '9')), 32767);
  EXPECT_EQ(LeadingInteger("0." + std::string(10000, '0') + "1"), 0);
}

TEST(OptionFields, EveryFieldHasItsOwnPlaceAndReadsBackWhatItHolds) {
  OptionRecord record;
  std::set<std::string_view> keys;
  int value = 100;
  for (const OptionField& field : OptionFields()) {
    EXPECT_TRUE(keys.insert(field.key.text()).second) << field.key.text();
    EXPECT_EQ(field.Get(record), field.default_text) << field.key.text();
    field.Set(record, std::to_string(value++));
  }
  value = 100;
  for (const OptionField& field : OptionFields()) {
    EXPECT_EQ(field.Get(record), std::to_string(value++)) << field.key.text();
  }
  EXPECT_EQ(keys.size(), 55u);
  EXPECT_EQ(OptionFields().back().key.text(), "VerDisp");
  EXPECT_EQ(OptionFields().back().section, "Settings");
  EXPECT_EQ(FindOptionField("optstcol"), nullptr);
}

TEST(OptionHelp, SaysOfEveryOptionWhatItHolds) {
  for (const OptionField& field : OptionFields()) {
    const bool is_text = field.kind == OptionKind::kText;
    const bool is_unbounded = field.highest == std::numeric_limits<int16_t>::max();
    const std::string range = std::to_string(field.lowest) + "～" +
                              (is_unbounded ? std::string() : std::to_string(field.highest));
    const std::string value(field.default_text);
    const HelpText& help = OptionHelp(field.key);
    std::string values = is_text ? "文字列" : range;
    values.append("（既定値 ").append(is_text ? "\"" + value + "\"" : value).append("）");
    EXPECT_EQ(help.values, values) << help.key;
    EXPECT_FALSE(help.name.empty() || help.text.empty()) << help.key;
    EXPECT_EQ(help.text.find('\n'), std::string::npos) << help.key;
  }
}

TEST(CompareOptions, ClampsWhateverIsStored) {
  OptionRecord record;
  for (const OptionField& field : OptionFields()) {
    if (field.number != nullptr) field.number(record) = std::numeric_limits<int16_t>::min();
  }
  const CompareOptions lowest(record);
  EXPECT_EQ(lowest.first_column, 1);
  EXPECT_EQ(lowest.compare_length(), 1);
  EXPECT_EQ(lowest.match_lines, 1);
  EXPECT_EQ(lowest.window_lines, 1);
  EXPECT_EQ(lowest.tab_width, 1);
  EXPECT_EQ(lowest.side_width, 70);
  EXPECT_EQ(lowest.context_lines, 1);
  EXPECT_EQ(lowest.spaces, SpaceRule::kCompare);
  EXPECT_TRUE(lowest.ignore_case && !lowest.wrap && !lowest.simple);
  const OptionDraft shown(record);
  for (const OptionField& field : OptionFields()) {
    if (field.number == nullptr) continue;
    EXPECT_EQ(shown.Text(field.key), std::to_string(field.lowest)) << field.key.text();
    field.number(record) = 2;
  }
  EXPECT_TRUE(CompareOptions(record).simple);

  record.OptSTCol = 20;
  record.OptEDCol = 10;
  record.OptBuff = 9999;
  record.OptTABtoKETA = 0;
  record.OptSpData = 7;
  const CompareOptions options(record);
  EXPECT_EQ(options.first_column, 20);
  EXPECT_EQ(options.last_column, 20);
  EXPECT_EQ(options.window_lines, 4000);
  EXPECT_EQ(options.tab_width, 1);
  EXPECT_EQ(options.spaces, SpaceRule::kIgnoreAll);
}

TEST(OptionDraft, RefusesWithTheMessageOfTheFirstFailedCheck) {
  for (const auto& row : test::ReadTable("option_refusals.tsv")) {
    OptionDraft draft{OptionRecord()};
    std::optional<std::string> refused;
    for (const std::string& setting : SplitAt(row[0], '|')) {
      const size_t equals = setting.find('=');
      if (!refused) refused = draft.Set(setting.substr(0, equals), setting.substr(equals + 1));
    }
    if (!refused) refused = draft.Check();
    EXPECT_EQ(refused.value_or("accepted"), row[1]) << row[0];
  }
}

TEST(OptionDraft, AcceptTrimsAndPacks) {
  OptionDraft draft{OptionRecord()};
  for (const auto& [key, value] :
       {std::pair("PrintCompLen", "80 (A4横:8ﾎﾟ)"), std::pair("NoPattern", "  *.a ; b "),
        std::pair("FPatternTtl1", ""), std::pair("FPattern1", " "),
        std::pair("FPatternTtl2", " Cobol "), std::pair("FPattern2", " *.CPY")}) {
    ASSERT_FALSE(draft.Set(key, value));
  }
  ASSERT_FALSE(draft.Check());
  OptionRecord record;
  draft.Accept(record);
  EXPECT_EQ(record.PrintCompLen, 80);
  EXPECT_EQ(record.NoPattern, "*.a ; b");
  EXPECT_EQ(record.FPatternTtl, (std::array<std::string, 3>{"CBLｿｰｽ", "Cobol", ""}));
  EXPECT_EQ(record.FPattern, (std::array<std::string, 3>{"*.CBL;*.COB", "*.CPY", ""}));
}

}  // namespace
}  // namespace ledrix
