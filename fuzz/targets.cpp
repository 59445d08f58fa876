#include "targets.h"

namespace ledrix::fuzz {
namespace {

using namespace std::string_literals;

// What stands before the texts of a compare: options and all else as usual, or most of it not.
const std::string kUsual(5, '\0');
const std::string kUnusual = "\1\0\0\0\0\1\0\1"s + std::string(17, '\1');

const std::vector<Target> kTargets = {
    {"judge",
     JudgeTarget,
     {"\0\0日本語のテキスト\r\n"s, "\0\0\x93\xFA\x96\x7B\x8C\xEA\r\n"s,
      "\5\0\xC6\xFC\xCB\xDC\xB8\xEC\n"s, "\0\0\x1B$BF|K\\\x1B(B"s, "\0\0+ZeVnLIqe-"s,
      "\0\0\xFF\xFE\xE5\x65\x2C\x67"s, "\1\1\xE6\x97"s, "\0\0\0a\0b\0\n"s},
     4000},
    {"convert",
     ConvertTarget,
     {"\0日本語～−Ⅲ①𠮷\r\né\r\n"s, "\1\xC6\xFC\x8E\xB1\x8F\xB0\xA1\xF9\xA1\n"s,
      "\2\x1B$BF|K\\\x1B(I1\x1B(Jx\n\x1B$(D0!\x1B(B\r"s, "\3\x93\xFA\xB1\x87\x40\xED\x40\xFA\x5B"s,
      "\4+ZeVnLIqe-a+-+2EA-\n"s, "\5\xFF\xFE\xE5\x65\x0D\0\x0A\0x"s, "\6\xE5\x65\x42\xD8\x0A\0"s,
      "\7\x65\xE5\0\x0D\0\x0A\0a"s, "\10日本\r\n\x93\xFA\r\n\xC6\xFC\r\n\x1B$BF|\r\n"s,
      "\11ａｂｃ\n"s, "\15\x84\x31\x95\x33\xC8\xD5"s, "\16\x1B$B\x30\x21\x1B.A\x1BNi"s,
      "\21\xFF\xFE\0\0a\0\0\0"s, "\23\x0E\x45\x46\x0F"s},
     1000},
    {"prepare",
     PrepareTarget,
     {"\0 a\tb  "s, kUnusual.substr(0, 21) + "Select　ｓｅｌ\t\x81\x40 \x82\x81\xFA\x40 ",
      "\1\0\6\0\3\0\0\0\0\1\1\1\1x \x81\x40\x81"s},
     8000},
    {"compare",
     CompareTarget,
     {kUsual + "\0abcdefgh\x1C\0abXcdfgh"s, kUsual + "\1a\nb\r\nc\n\x1C\1a\nB\r\nc"s,
      "\0\1\2\3\1\0aaaabbbbccccabab\x1C\0aabbabccc"s, kUnusual + "\1a\tb\n c\n\x1C\1A b\nc \n"s,
      kUsual + "\0\x1C\0abc"s},
     1000},
    {"pair",
     PairTarget,
     {"\0\0a\r\nb\n\34a\nB"s, "\0\1\1\xC6\xFC\n\34\xC6\xFC\r\n\x8F\xB0\xA1"s, "\0\1\0é\n\34è\n"s,
      "\0\1\10\xE3\x80\x9C\34\x81\x60"s},
     800},
    {"dir-info",
     DirInfoTarget,
     {"\\src\r\n\\lib\\,a.c,2024/03/09 9:05:03,40\r\n\\,a,b,2024/3/9,0\r\n",
      "\\x\n\\\x95\\\\,\x83\x5C,2024/02/29 23:59:59,18446744073709551615"},
     4000},
    {"dir-compare",
     DirCompareTarget,
     {"\0\0\0\0\0\0\\,a.c,2024/03/09 9:05:03,40\r\n\\d\\,B,2024/3/9,1\r\n\x1C"s
      "\\,a.c,2024/03/09 9:05:04,40\r\n\\d\\,b,2024/3/9,1\r\n"s,
      "\1\1\1\1\1\1\\,\xB1.c,2024/03/09 9:05:03,40\x1C\\,\x83\x41.C,2024/03/09 18:05:03,40"s},
     1500},
    {"settings",
     SettingsTarget,
     {"\1Section\x1Ckey\x1Ctext\x1C[Option]\r\nOptSTCol=7\nOptEDCol= 72\nFPattern0=*.a;*.b\n"s,
      "\0\x1C=[]\\\x1C\n\r\\\0\x1C\xEF\xBB\xBFroot=1\n[a\\b]\nk\\e\\o=\\n\\r\\0\\\\\n[a\\b]\nk=2"s,
      "\1Option\x1C\x1C\x1C[Option]\nContOutDir=1\nContOutDirPath=/tmp/\nCharset=a  b"s},
     500},
    {"ini",
     IniTarget,
     {"value\x1C[Section]\r\nKey = old\r\nNumber=+12\r\n\r\n; note\r\n[Other]\r\nkey='x'\r\n",
      " \"表\" \x1C[SECTION]\nKEY=\"\x95\x5C\"\n", "\x1C[Other]\nkey=1\n[Section"},
     500},
    {"pattern",
     PatternTarget,
     {"[Pattern]\r\nName=COBOL\r\n[Option]\r\nOptSTCol=7\r\nOptEDCol=72\r\nOptMatch=99999\r\n",
      "[Pattern]\nName=\x83\x5C\n[Option]\nOptTABtoKETA=-1\nComboLstLst=*.x\nOptSpData=2e9\n"},
     150},
    {"run-log",
     RunLogTarget,
     {"/tmp/,2024/03/09 14:00:00\r\n/,2024/03/01 9:00:00\r\n/dev/,2024/02/08 0:00:00\r\n",
      "/TMP/,2024/3/9\n/tmp/,2024/3/8\n/tmp,2024/3/8\n/etc/,x,2024/3/9\n/tmp/../,9999/12/31"},
     500},
    {"command-line",
     CommandLineTarget,
     {"/old \"a b\" /new c /out d /Dm /dG x", "/old\x1C/new\x1C\x1C x \x1C/LST\x1C/old",
      "/old /new \"\" \""},
     8000},
    {"name-pattern",
     NamePatternTarget,
     {"KYUYO01.CBL\x1C*.cbl;*.COB", "a1\x1C[!b]#", "表計算.x\x1C*計?.[xy]", "[a\x1C[a",
      "aaaaaaaaaaaaaaab\x1C*a*a*a*ab"},
     8000},
    {"launcher",
     LauncherTarget,
     {"[Desktop Entry]\nType=Application\nName=A\nName[ja]=あ\nIcon=i\nExec=cat %f \"%F\" '%c' "
      "%i\n",
      "[Desktop Entry]\r\nType = Application\nTryExec=sh\nExec=sh -c \"echo \\\\$1 %%\" x%ux\n"
      "Terminal=true\nHidden=false\nPath=/tmp\n",
      "cat \\%f '%f' \"a\\\"%k\" %d"},
     2000},
};

}  // namespace

const std::vector<Target>& Targets() {
  return kTargets;
}

}  // namespace ledrix::fuzz
