#include <gtest/gtest.h>

#include <random>

#include "compare/listing_frame.h"
#include "platform/fixed_width.h"
#include "run/listing_format.h"
#include "support/test_files.h"
#include "text/code_page_932.h"

namespace ledrix::modComp {
namespace {

using test::TempFolder;

TEST(WriteFixedWidth, WrapsWithoutSplittingCharacters) {
  struct Case {
    const char* text;
    std::vector<std::string> lines;
  };
  const Case cases[] = {
      {"", {"      "}},
      {"abcdef", {"abcdef"}},
      {"abcdefg", {"abcdef", "g     "}},
      {"abcdeあx", {"abcde ", "あx   "}},
      {"あいうえおか", {"あいう", "えおか"}},
      {"xあいうえ", {"xあい ", "うえ  "}},
  };
  const TempFolder folder;
  for (const Case& c : cases) {
    Result<OutputFile> file = OutputFile::Create(folder.At("f"));
    WriteFixedWidth(file.value(), EncodeSjis(c.text), 6);
    ASSERT_TRUE(file.value().Close().ok());
    EXPECT_EQ(test::ReadLines(folder.At("f")), c.lines) << c.text;
  }
}

TEST(SplitsDoubleByte, SeesTheSameCharactersAsAWalkFromTheStart) {
  // Lead bytes, trail bytes, both, neither.
  constexpr std::string_view kBytes = "\x81\x9F\xE0\xFC\x83\x40\x5C\x7E\x80\xA0\xDF a\x7F\xFF";
  std::mt19937 random(932);
  for (int i = 0; i < 20000; ++i) {
    std::string bytes;
    for (size_t size = random() % 12; size > 0; --size) bytes += kBytes[random() % kBytes.size()];
    const SjisView text = SjisView::FromBytes(bytes);
    for (size_t cut = 0; cut <= text.size() + 1; ++cut) {
      size_t position = 0;
      while (position < cut && position < text.size()) position += SjisCharSize(text, position);
      const bool splits = cut < text.size() && position > cut;
      ASSERT_EQ(SplitsDoubleByte(text, cut), splits) << i << ", cut at " << cut;
    }
  }
}

TEST(Numbers, AreWrittenInTheirFixedForms) {
  struct Case {
    int64_t number;
    const char* thousands;
    const char* signed_thousands;
    const char* line_number;
    const char* marker;
  };
  const Case cases[] = {
      {0, "0", "+0", "0000", "(S000)"},
      {7, "7", "+7", "0007", "(S007)"},
      {999, "999", "+999", "0999", "(S999)"},
      {1000, "1,000", "+1,000", "1000", "(S1000)"},
      {12345, "12,345", "+12,345", "2345", "(S12345)"},
      {1234567, "1,234,567", "+1,234,567", "4567", "(S1234567)"},
      {10000, "10,000", "+10,000", "0000", "(S10000)"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(FormatThousands(c.number), c.thousands);
    EXPECT_EQ(FormatSignedThousands(c.number), c.signed_thousands);
    EXPECT_EQ(FormatLineNo(c.number).bytes(), c.line_number);
    EXPECT_EQ(BlockMarkerText('S', c.number).bytes(), c.marker);
  }
  EXPECT_EQ(FormatSignedThousands(-1234), "-1,234");
  EXPECT_EQ(FormatSignedThousands(-999), "-999");
  EXPECT_EQ(RightAligned("1,234,567", 6), "1,234,");
  EXPECT_EQ(RightAligned("7", 5), "    7");
}

TEST(FormatFileCell, LaysPathsOfEveryLengthIntoTwoLines) {
  // 13 bytes of path fit before the stamp on the second line.
  for (const auto& row : test::ReadTable("file_cells.tsv")) {
    const FileCell cell = FormatFileCell({EncodeSjis(row[1]), "2024/03/09 14:05"_sjis}, 30);
    EXPECT_EQ(DecodeSjis(cell.first), row[2]) << row[0];
    EXPECT_EQ(DecodeSjis(cell.second), row[3]) << row[0];
    EXPECT_EQ(cell.first.size(), 30u) << row[0];
    EXPECT_EQ(cell.second.size(), 30u) << row[0];
  }
}

// Every line of header, ruler, omission line and summary is as wide as the listing, whatever the
// side's width.
TEST(ListingFrame, EveryLineHasTheWidthOfTheListing) {
  const TempFolder folder;
  const HeaderData data{{EncodeSjis("/旧/" + std::string(80, 'o')), "2024/03/09 14:05"_sjis},
                        {EncodeSjis("/新/n"), "2024/03/09 14:05"_sjis},
                        ToLocalTime({test::kTestTime, 0})};
  for (int width = 70; width <= 300; ++width) {
    for (const int flags : {0, 1, 2, 3, 4, 5, 6, 7}) {
      OptionRecord record;
      record.PrintCompLen = static_cast<int16_t>(width);
      record.OptSimple = flags & 1;
      record.LineNoAdd = (flags >> 1) & 1;
      record.OptOutLineVar = (flags >> 2) & 1;
      const CompareOptions options(record);
      const ListingFormat format(options);
      Result<OutputFile> file = OutputFile::Create(folder.At("f"));
      (options.simple ? WriteSimpleHeader : WriteHeaderBox)(file.value(), options, format, data);
      (options.simple ? WriteSimpleSummary : WriteSummaryBox)(file.value(), format,
                                                              {9, 9999999, 1, 123456, 3});
      ASSERT_TRUE(file.value().Close().ok());
      size_t lines = 0;
      const std::string bytes = test::ReadFile(folder.At("f"));
      const size_t line_size = 2 * size_t(width) + 6 + 2;
      for (size_t at = 0; at < bytes.size(); at += line_size, ++lines) {
        ASSERT_EQ(bytes.substr(at + line_size - 2, 2), "\r\n") << width << " " << flags;
      }
      ASSERT_EQ(bytes.size() % line_size, 0u);
      // The old path is 84 bytes long; a wide listing has room for it beside its stamp.
      const bool two_rows = 84 >= width - width % 2 - (options.simple ? 17 : 21);
      ASSERT_EQ(lines, (options.simple ? 4u : 9u) + (two_rows ? 1u : 0u)) << width << " " << flags;
      if (!options.vertical) {
        ASSERT_EQ(format.omission_line.size(), line_size - 2);
      }
    }
  }
}

}  // namespace
}  // namespace ledrix::modComp
