#include "charset/conversion_loss.h"

#include <gtest/gtest.h>

#include "charset/line_converter.h"
#include "support/test_files.h"

namespace ledrix {
namespace {

// A text in a code; its lines end with LF, in UTF-16 as well.
struct Text {
  const char* charset;
  std::string bytes;
};

struct Converted {
  std::string text;
  ConversionLoss loss;
};

Converted Convert(const Text& text) {
  const auto converter = LineConverter::Make(text.charset);
  SjisText converted;
  LinePosition position = LinePosition::kFirst;
  for (size_t start = 0; start <= text.bytes.size();) {
    const size_t end = std::min(text.bytes.find('\n', start), text.bytes.size());
    converter->Convert(std::string_view(text.bytes).substr(start, end - start), position,
                       converted);
    position = LinePosition::kLater;
    start = end + 1;
  }
  return {converted.bytes(), converter->loss()};
}

TEST(ConversionLoss, TellsTextsApartThatReadTheSame) {
  struct Case {
    const char* name;
    Text one;
    Text other;
    bool same;
  };
  const Case cases[] = {
      {"characters", {"UTF-8", "吉𠮷"}, {"UTF-8", "吉𩸽"}, false},
      {"letters", {"UTF-8", "naïve"}, {"UTF-8", "naûve"}, false},
      {"invalid bytes", {"UTF-8", "\xE3\x81"}, {"UTF-8", "\xFF"}, false},
      {"an invalid byte and a character", {"UTF-8", "\xFF"}, {"UTF-8", "ÿ"}, false},
      {"a character and a question mark", {"UTF-8", "é"}, {"UTF-8", "?"}, false},
      {"the place among question marks", {"UTF-8", "?é"}, {"UTF-8", "é?"}, false},
      {"the order", {"UTF-8", "éè"}, {"UTF-8", "èé"}, false},
      {"the line", {"UTF-8", "a\né\n?"}, {"UTF-8", "a\n?\né"}, false},
      {"nothing lost", {"UTF-8", "a?あ"}, {"UTF-8", "?\n\n〜"}, true},
      {"the same text", {"UTF-8", "é\n？é?è"}, {"UTF-8", "é\n？é?è"}, true},
      {"UTF-16",
       {"UTF-8", "?é𠮷"},
       {"UTF-16LE", std::string("?\0\xE9\0\x42\xD8\xB7\xDF", 8)},
       true},
      {"either byte order",
       {"UTF-16LE", std::string("\x3D\xD8?\0\xE9\0", 6)},
       {"UTF-16BE", std::string("\xD8\x3D\0?\0\xE9", 6)},
       true},
      {"an odd byte",
       {"UTF-16LE", std::string("a\0b", 3)},
       {"UTF-16LE", std::string("a\0c", 3)},
       false},
      {"UTF-7", {"UTF-8", "é"}, {"UTF-7", "+AOk-"}, true},
      {"UTF-7, bits left over", {"UTF-7", "+MEJB-"}, {"UTF-7", "+MEJC-"}, false},
      {"EUC-JP, supplementary set", {"UTF-8", "丂"}, {"EUC-JP", "\x8F\xB0\xA1"}, true},
      {"EUC-JP, no character", {"EUC-JP", "\xA9\xA1"}, {"EUC-JP", "\xA9\xA2"}, false},
      {"ISO-2022-JP, supplementary set", {"UTF-8", "丂"}, {"ISO-2022-JP", "\x1B$(D0!"}, true},
      {"ISO-2022-JP, sets", {"ISO-2022-JP", "\x1B$B)!"}, {"ISO-2022-JP", "\x1B$(D)!"}, false},
      {"Shift_JIS", {"SJIS", "\x85\x40"}, {"SJIS", "\x85\x41"}, false},
      {"line by line", {"UTF-8", "\né"}, {"_autodetect", "\né"}, true},
      {"the C library's codes", {"UTF-8", "aé"}, {"windows-1252", "a\xE9"}, true},
      {"invalid there", {"windows-1252", "\x81"}, {"windows-1252", "\x8D"}, false},
      {"unfinished there", {"gb18030", "\x81"}, {"gb18030", "\x82"}, false},
  };
  for (const Case& c : cases) {
    const Converted one = Convert(c.one);
    const Converted other = Convert(c.other);
    EXPECT_EQ(one.loss == other.loss, c.same) << c.name;
    EXPECT_NE(one.loss.count() + other.loss.count() > 0, c.name == std::string("nothing lost"));
  }
}

TEST(ConversionLoss, CountsAndNamesTheFirstLine) {
  struct Case {
    Text text;
    uint64_t count;
    uint64_t first_line;
  };
  const Case cases[] = {
      {{"UTF-8", ""}, 0, 0},
      {{"UTF-8",
        "\xEF\xBB\xBF"
        "a?\n〜\n"},
       0,
       0},
      {{"UTF-8", "é?"}, 1, 1},
      {{"UTF-8", "\n\n?aé\xFF\n\xE3\x81"}, 3, 3},
      {{"EUC-JP", "\xA4\xA2\n\x8F\xA1"}, 2, 2},
      {{"windows-1252", "a\n\x81\x8D"}, 2, 2},
      {{"_autodetect", "a\n\x1B$B)!\x1B(B\nna\xC3\xAFve"}, 2, 2},
  };
  for (const Case& c : cases) {
    const Converted converted = Convert(c.text);
    EXPECT_EQ(converted.loss.count(), c.count) << converted.text;
    EXPECT_EQ(converted.loss.first_line(), c.first_line) << converted.text;
  }
}

}  // namespace
}  // namespace ledrix
