#include <gtest/gtest.h>

#include <limits>
#include <set>

#include "settings/compare_options.h"
#include "settings/option_draft.h"
#include "settings/option_record.h"
#include "text/ascii.h"
#include "text/leading_number.h"

namespace ledrix {
namespace {

TEST(LeadingNumber, ReadsWhatATextBeginsWith) {
  struct Case {
    const char* text;
    int16_t number;
  };
  const Case cases[] = {
      {"80 (A4横:8ﾎﾟ)", 80},
      {"", 0},
      {"abc", 0},
      {"80 1", 801},
      {" \t\n-1 2", -12},
      {"12.5", 12},
      {"13.5", 14},
      {"-0.5", 0},
      {"1.5e1x", 15},
      {"1e", 1},
      {"2e+", 2},
      {".5.5", 0},
      {"1.9.9", 2},
      {"+7", 7},
      {"--7", 0},
      {"1 e 2", 100},
      {".", 0},
      {"32768", 32767},
      {"-99999", -32768},
      {"1e999999", 32767},
      {"-1e999", -32768},
      {"1e-999999", 0},
      {"0x10", 0},
      {"１２", 0},
  };
  for (const Case& c : cases) EXPECT_EQ(LeadingInteger(c.text), c.number) << c.text;
  EXPECT_EQ(LeadingInteger(std::string(10000, '9')), 32767);
  EXPECT_EQ(LeadingInteger("0." + std::string(10000, '0') + "1"), 0);
}

TEST(OptionFields, EveryFieldHasItsOwnPlaceAndReadsBackWhatItHolds) {
  OptionRecord record;
  std::set<std::string_view> keys;
  int value = 100;
  for (const OptionField& field : OptionFields()) {
    EXPECT_TRUE(keys.insert(field.key).second) << field.key;
    EXPECT_EQ(field.Get(record), field.default_text) << field.key;
    field.Set(record, std::to_string(value++));
  }
  value = 100;
  for (const OptionField& field : OptionFields()) {
    EXPECT_EQ(field.Get(record), std::to_string(value++)) << field.key;
  }
  EXPECT_EQ(keys.size(), 55u);
  EXPECT_EQ(OptionFields().back().key, "VerDisp");
  EXPECT_EQ(OptionFields().back().section, "Settings");
  EXPECT_EQ(FindOptionField("optstcol"), nullptr);
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
  struct Case {
    const char* settings;  // KEY=VALUE joined by "|"
    const char* message;   // nullptr: accepted
  };
  const Case cases[] = {
      {"OptSTCol=0", "ﾃｷｽﾄｺﾝﾍﾟｱ：比較範囲（開始）に誤りが有ります（1～9999桁）"},
      {"OptSTCol=0.6", "ﾃｷｽﾄｺﾝﾍﾟｱ：比較範囲（開始）に誤りが有ります（1～9999桁）"},
      {"OptSTCol=99999", "ﾃｷｽﾄｺﾝﾍﾟｱ：比較範囲（開始）に誤りが有ります（1～9999桁）"},
      {"OptEDCol=10000", "ﾃｷｽﾄｺﾝﾍﾟｱ：比較範囲（終了）に誤りが有ります（1～9999桁）"},
      {"OptEDCol=", "ﾃｷｽﾄｺﾝﾍﾟｱ：比較範囲（終了）に誤りが有ります（1～9999桁）"},
      {"OptSTCol=10|OptEDCol=5", "ﾃｷｽﾄｺﾝﾍﾟｱ：比較範囲（開始／終了）に誤りが有ります"},
      {"OptMatch=100", "ﾃｷｽﾄｺﾝﾍﾟｱ：一致条件に誤りが有ります（1～99行）"},
      {"OptBuff=4001|OptLstout=0", "ﾃｷｽﾄｺﾝﾍﾟｱ：先読み行数に誤りが有ります（1～4000行）"},
      {"NoPattern= *.* ", "ﾃｷｽﾄｺﾝﾍﾟｱ：対象外ﾌｧｲﾙﾀｲﾌﾟに全て(*.*)は指定できません"},
      {"OptLstout=0", "ﾃｷｽﾄｺﾝﾍﾟｱ：出力幅（縦）に誤りが有ります（1～99行）"},
      {"PrintCompLen=abc", "ﾃｷｽﾄｺﾝﾍﾟｱ：出力幅（横）に誤りが有ります（70～300桁）"},
      {"OptTABtoKETA=17", "ﾃｷｽﾄｺﾝﾍﾟｱ：TAB桁数に誤りが有ります（1～16桁）"},
      {"ComboLstLst=x", "ﾃｷｽﾄｺﾝﾍﾟｱ：結果ﾌｧｲﾙ拡張子に誤りが有ります（*文字がありません）"},
      {"ComboCSVName=  ", "同時出力：CSVﾌｧｲﾙ名称が未設定です"},
      {"ComboLstSbn=", "同時出力：差分ﾌｧｲﾙ拡張子に誤りが有ります（*文字がありません）"},
      {"PrintDCompLen=69", "ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱ：出力幅に誤りが有ります（70～300桁）"},
      {"DCompOut0=0|DCompOut1=0|DCompOut2=0", "ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱ：出力内容制限の設定に誤りが有ります"},
      {"ComboDLst=a", "ﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱ：ﾌｧｲﾙ拡張子に誤りが有ります（*文字がありません）"},
      {"ComboStp=a", "ｽﾃｯﾌﾟｶｳﾝﾄ：出力ﾌｧｲﾙ拡張子に誤りが有ります（*文字がありません）"},
      {"FPatternTtl2= x ",
       "画面制御：ﾕｰｻﾞ設定 ﾌｧｲﾙﾀｲﾌﾟ ｵﾌﾟｼｮﾝ に誤りが有ります\r（ﾊﾟﾀｰﾝ未設定)  3 番目"},
      {"FPatternTtl0=",
       "画面制御：ﾕｰｻﾞ設定 ﾌｧｲﾙﾀｲﾌﾟ ｵﾌﾟｼｮﾝ に誤りが有ります\r（ﾀｲﾄﾙ未設定)  1 番目"},
      {"NoSuchKey=1", "ｵﾌﾟｼｮﾝ NoSuchKey は有りません"},
      {"OptSimple=2", "ｵﾌﾟｼｮﾝ OptSimple の値に誤りが有ります（2）"},
      {"OptSpData=-1", "ｵﾌﾟｼｮﾝ OptSpData の値に誤りが有ります（-1）"},
      {"FontSize=", "ｵﾌﾟｼｮﾝ FontSize の値に誤りが有ります（）"},
      {"PrintCompLen=80 (A4横:8ﾎﾟ)|OptTABtoKETA=16|OptSTCol=9999", nullptr},
  };
  for (const Case& c : cases) {
    OptionDraft draft{OptionRecord()};
    std::optional<std::string> refused;
    for (const std::string& setting : SplitAt(c.settings, '|')) {
      const size_t equals = setting.find('=');
      if (!refused) refused = draft.Set(setting.substr(0, equals), setting.substr(equals + 1));
    }
    if (!refused) refused = draft.Check();
    EXPECT_EQ(refused.value_or("accepted"), c.message == nullptr ? "accepted" : c.message)
        << c.settings;
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
