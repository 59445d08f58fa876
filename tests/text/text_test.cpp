#include <gtest/gtest.h>
#include <iconv.h>
#include <locale.h>
#include <wctype.h>

#include <cstring>

#include "support/test_files.h"
#include "text/code_page_932.h"
#include "text/sjis_text.h"
#include "text/utf8.h"

namespace ledrix {
namespace {

using test::Sjis;

TEST(SjisText, SplitsDoubleByteStepsByCharacters) {
  struct Case {
    const char* name;
    std::string bytes;
    size_t count;
    bool splits;
  };
  const Case cases[] = {
      {"between characters", Sjis("あい"), 2, false},
      {"inside the second", Sjis("あい"), 3, true},
      {"at the end", Sjis("あい"), 4, false},
      {"trail byte that looks like a lead byte", "\x83\x83\x83\x83", 2, false},
      {"odd cut in such a run", "\x83\x83\x83\x83", 3, true},
      {"half-width katakana", Sjis("ｱｲｳ"), 1, false},
      {"lead byte without a trail byte", "a\x81 b", 2, false},
      {"nothing before the cut", Sjis("あ"), 0, false},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(SplitsDoubleByte(SjisView::FromBytes(c.bytes), c.count), c.splits) << c.name;
  }
}

TEST(SjisText, TrimmingTakesHalfWidthSpacesOnly) {
  const std::string text = Sjis("  a　b\t ");
  EXPECT_EQ(TrimRight(SjisView::FromBytes(text)).bytes(), Sjis("  a　b\t"));
  EXPECT_EQ(Trim(SjisView::FromBytes(text)).bytes(), Sjis("a　b\t"));
  EXPECT_EQ(Trim(SjisView::FromBytes("   ")).bytes(), "");
}

TEST(CodePage932, EncodesBothSpellingsAndReplacesWhatItLacks) {
  for (const auto& row : test::ReadTable("encoded.tsv")) EXPECT_EQ(Sjis(row[0]), row[1]) << row[0];
}

// Every code of the table, against the C library's own table and back. Where several codes stand
// for one character the way back must end at the code that Windows chooses.
TEST(CodePage932, AgreesWithTheSystemTableBothWays) {
  const iconv_t decode = iconv_open("UTF-8", "CP932");
  const iconv_t encode = iconv_open("CP932", "UTF-8");
  const auto convert = [](iconv_t converter, std::string bytes) {
    char out[16];
    char* in_at = bytes.data();
    char* out_at = out;
    size_t in_left = bytes.size();
    size_t out_left = sizeof out;
    iconv(converter, nullptr, nullptr, nullptr, nullptr);
    const bool failed = iconv(converter, &in_at, &in_left, &out_at, &out_left) == size_t(-1);
    return failed ? std::string() : std::string(out, out_at);
  };
  int characters = 0;
  for (int code = 1; code < 0x10000; ++code) {
    const std::string bytes =
        code < 0x100 ? std::string(1, static_cast<char>(code))
                     : std::string{static_cast<char>(code >> 8), static_cast<char>(code & 0xFF)};
    const std::string utf8 = convert(decode, bytes);
    if (utf8.empty() || (bytes.size() == 2 && !IsSjisLead(static_cast<unsigned char>(code >> 8))))
      continue;
    ++characters;
    ASSERT_EQ(DecodeSjis(SjisView::FromBytes(bytes)), utf8) << std::hex << code;
    ASSERT_EQ(EncodeSjis(utf8).bytes(), convert(encode, utf8)) << std::hex << code;
  }
  EXPECT_EQ(characters, 190 + 9604);
  iconv_close(decode);
  iconv_close(encode);
}

TEST(Utf8, LettersHaveTheCasesOfTheSystem) {
  const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  if (unicode == nullptr) GTEST_SKIP() << "no locale C.UTF-8";
  int letters = 0;
  for (char32_t c = 0; c < 0x30000; ++c) {
    ASSERT_EQ(ToUpper(c), towupper_l(static_cast<wint_t>(c), unicode)) << std::hex << +c;
    ASSERT_EQ(ToLower(c), towlower_l(static_cast<wint_t>(c), unicode)) << std::hex << +c;
    if (ToUpper(c) != c) ++letters;
  }
  EXPECT_GT(letters, 1300);
  freelocale(unicode);
}

TEST(Utf8, RefusesWhatIsNoCharacter) {
  for (const std::string bytes : {"\xC0\x80", "\xED\xA0\x80", "\xF5\x80\x80\x80", "\x80", "\xE3"}) {
    EXPECT_FALSE(DecodeUtf8(bytes, 0).valid);
    EXPECT_EQ(DecodeUtf8(bytes, 0).size, 1u);
  }
  EXPECT_EQ(DecodeUtf8("\xF4\x8F\xBF\xBF", 0).character, 0x10FFFFu);
}

}  // namespace
}  // namespace ledrix
