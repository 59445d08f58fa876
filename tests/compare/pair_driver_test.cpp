#include "compare/pair_driver.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/test_run.h"
#include "text/code_page_932.h"

namespace ledrix::modComp {
namespace {

using test::FileExists;
using test::ReadLines;
using test::SetModified;
using test::Sjis;
using test::TempFolder;
using test::TestRun;
using Texts = std::vector<std::string>;

// A run that compares two files of a folder of its own.
struct PairRun : TestRun {
  TempFolder folder;

  PairRun(std::string_view old_bytes, std::string_view new_bytes) {
    job.files.OldPath = folder.Write("old.txt", old_bytes);
    job.files.NewPath = folder.Write("new.txt", new_bytes);
    SetModified(job.files.OldPath, test::kTestTime);
    SetModified(job.files.NewPath, test::kTestTime + 60);
    job.files.OutPath = folder.At("out.lst");
    request.OldPath = job.files.OldPath;
    request.NewPath = job.files.NewPath;
  }
  void WantSideOutputs() {
    job.outputs.OptSbnList = job.outputs.OptMrgSrc = true;
    job.files.SbnPath = folder.At("out.sbn");
    job.files.MrgPath = folder.At("out.mrg");
  }
  // The message of the result entry.
  std::string Compare() {
    ComparePair(services);
    return front_end.results.back();
  }
  Texts Listing() { return ReadLines(job.files.OutPath); }
  // The listing without header and summary.
  Texts Body() {
    Texts lines = Listing();
    return {lines.begin() + 6, lines.end() - 4};
  }
};

Texts Numbered(int first, int last) {
  Texts lines;
  for (int i = first; i <= last; ++i) lines.push_back("line " + std::to_string(i));
  return lines;
}

Texts operator+(Texts a, const Texts& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

std::string File(const Texts& lines) {
  return Sjis(test::Lines(lines));
}

// A body line for tables: "(S001)", "...", "! a|b", "+ b", "- a", "= a".
Texts Summary(const Texts& body) {
  Texts rows;
  for (const std::string& line : body) {
    const std::string bytes = Sjis(line);
    const std::string mark = DecodeSjis(SjisView::FromBytes(bytes.substr(90, 6)));
    const auto side = [&bytes](size_t from) {
      return std::string(TrimRight(SjisView::FromBytes(bytes.substr(from, 90))).bytes());
    };
    if (line.find("中略") != std::string::npos) {
      rows.emplace_back("...");
    } else if (mark[0] == '(') {
      rows.push_back(mark);
    } else if (mark == " 変更 ") {
      rows.push_back("! " + side(0) + "|" + side(96));
    } else if (mark == " 追加 ") {
      rows.push_back("+ " + side(96));
    } else if (mark == " 削除 ") {
      rows.push_back("- " + side(0));
    } else {
      rows.push_back("= " + side(0));
    }
  }
  return rows;
}

TEST(ListingBody, ShowsBlocksWithTheirContext) {
  struct Case {
    const char* name;
    Texts old_lines;
    Texts new_lines;
    const char* settings;
    Texts body;
  };
  const Texts tail = Numbered(20, 30);
  const Case cases[] = {
      {"no difference", tail, tail, "OptLstout=2", {"..."}},
      {"context before and after, rest omitted",
       Numbered(1, 5) + Texts{"old"} + tail,
       Numbered(1, 5) + Texts{"new"} + tail,
       "OptLstout=2",
       {"...", "= line 4", "= line 5", "(S001)", "! old|new", "(E001)", "= line 20", "= line 21",
        "..."}},
      {"as many lines before as are shown",
       Numbered(1, 2) + Texts{"old"} + Numbered(20, 21),
       Numbered(1, 2) + Texts{"new"} + Numbered(20, 21),
       "OptLstout=2",
       {"= line 1", "= line 2", "(S001)", "! old|new", "(E001)", "= line 20", "= line 21"}},
      {"few lines between two blocks",
       Texts{"a"} + Numbered(1, 3) + Texts{"b"},
       Texts{"x"} + Numbered(1, 3) + Texts{"y"},
       "OptLstout=2|OptMatch=3",
       {"(S001)", "! a|x", "(E001)", "= line 1", "= line 2", "= line 3", "(S002)", "! b|y",
        "(E002)"}},
      {"added and deleted at the end",
       Texts{"a", "only old"},
       Texts{"a"},
       "",
       {"= a", "(S001)", "- only old", "(E001)"}},
      {"empty lines have a row",
       Texts{"a", "b"},
       Texts{"a", "", "b"},
       "OptMatch=1",
       {"= a", "(S001)", "+ ", "(E001)", "= b"}},
      {"every line",
       Numbered(1, 3) + Texts{"old"} + Numbered(4, 6),
       Numbered(1, 3) + Texts{"new"} + Numbered(4, 6),
       "OptLstout=1|OptOutLineCnt=1",
       {"= line 1", "= line 2", "= line 3", "(S001)", "! old|new", "(E001)", "= line 4", "= line 5",
        "= line 6"}},
  };
  for (const Case& c : cases) {
    PairRun run(File(c.old_lines), File(c.new_lines));
    run.SetAll(c.settings);
    run.Compare();
    EXPECT_EQ(Summary(run.Body()), c.body) << c.name;
  }
}

TEST(ListingBody, HoldsBackAnyNumberOfLines) {
  Texts many;
  for (int i = 0; i < 1500; ++i) many.push_back(std::to_string(i));
  PairRun run(File(many + Texts{"old"}), File(many + Texts{"new"}));
  run.Set("OptLstout", "99");
  run.Set("OptBuff", "1");
  run.Compare();
  const Texts rows = Summary(run.Body());
  ASSERT_EQ(rows.size(), 1u + 99 + 3);
  EXPECT_EQ(rows[0], "...");
  EXPECT_EQ(rows[1], "= 1401");
  EXPECT_EQ(rows[99], "= 1499");
}

struct GoldenCase {
  const char* name;
  const char* settings;

  friend void PrintTo(const GoldenCase& c, std::ostream* out) { *out << c.settings; }
};

class Golden : public ::testing::TestWithParam<GoldenCase> {};

// Inputs with every kind of difference, long lines, characters at the wrap column and tabs.
TEST_P(Golden, ListingAndSideOutputs) {
  const std::string source = LEDRIX_GOLDEN_FOLDER "/compare/";
  PairRun run(test::ReadFile(NativePath(source + "old.txt")),
              test::ReadFile(NativePath(source + "new.txt")));
  run.SetAll(GetParam().settings);
  run.WantSideOutputs();
  run.job.outputs.MergeMarks = run.options.MergeOld == 1;
  run.Compare();
  const std::string stem = "compare/" + std::string(GetParam().name);
  test::ExpectGolden(stem + ".lst", test::ReadFile(run.job.files.OutPath), run.folder);
  test::ExpectGolden(stem + ".sbn", test::ReadFile(run.job.files.SbnPath), run.folder);
  test::ExpectGolden(stem + ".mrg", test::ReadFile(run.job.files.MrgPath), run.folder);
}

INSTANTIATE_TEST_SUITE_P(
    Layouts, Golden,
    ::testing::Values(
        GoldenCase{"box", "OptLstout=3"},
        GoldenCase{"box_odd_numbers", "PrintCompLen=71|LineNoAdd=1|OptLstout=3|MergeOld=1"},
        GoldenCase{"box_vertical", "OptOutLineVar=1|PrintCompLen=81|OptLstout=3"},
        GoldenCase{"box_vertical_numbers",
                   "OptOutLineVar=1|LineNoAdd=1|PrintCompLen=70|OptLstout=3"},
        GoldenCase{"simple", "OptSimple=1|OptLstout=3|OptSpData=2|OptTABtoSPACE=1"},
        GoldenCase{"simple_odd", "OptSimple=1|PrintCompLen=73|OptLstout=3|OptSpData=0|MergeOld=1"},
        GoldenCase{"simple_vertical", "OptSimple=1|OptOutLineVar=1|OptLstout=3|PrintCompLen=72"},
        GoldenCase{"cut_all_lines",
                   "NTypeNextLine=0|OptOutLineCnt=1|OptTABtoSPACE=1|PrintCompLen=72"},
        GoldenCase{"no_case_columns",
                   "OptUpperCase=0|OptSTCol=7|OptEDCol=72|OptLstout=3|OptMatch=2|OptBuff=20"}),
    [](const auto& param_info) { return std::string(param_info.param.name); });

TEST(ListingBody, AFifthMarkedRowOfALongLine) {
  // 950 bytes at 90 a row are ten rows; what is behind them is not shown.
  PairRun run("x" + std::string(949, 'o') + "TAIL\n", "y\n");
  run.Compare();
  const Texts body = run.Body();
  ASSERT_EQ(body.size(), 12u);
  EXPECT_EQ(body[1].substr(0, 2), "xo");
  EXPECT_EQ(body[10].substr(90, 6), "  --  ");
  EXPECT_EQ(body[10].substr(85, 5), "ooooo");
  for (const std::string& line : body) EXPECT_EQ(Sjis(line).size(), 186u);
}

TEST(PairDriver, EndsEachPairAsTheTableSays) {
  struct Case {
    const char* name;
    const char* old_bytes;
    const char* new_bytes;
    const char* settings;
    bool same_time;
    const char* result;
    JobEnd end;
    bool listing;
    bool difference_file;
    bool merge_source;
  };
  const Case cases[] = {
      {"different", "a\nb\n", "a\nc\nd\n", "", false,
       "    UnMatch=    2 OLD=    2 NEW=    3 Rep=    1 Add=    1 Del=    0", JobEnd::kDifference,
       true, true, true},
      {"equal", "a\nb\n", "a\r\nb", "", false, "    変更なし   Old(New)=    2",
       JobEnd::kNoDifference, true, true, true},
      {"equal, no listing wanted", "a  \n", "a\n", "NoCompList=1", false,
       "    変更なし   Old(New)=    1", JobEnd::kNoDifference, false, false, true},
      {"different, no unchanged listing wanted", "a\n", "b\n", "NoCompList=1", false,
       "    UnMatch=    1 OLD=    1 NEW=    1 Rep=    1 Add=    0 Del=    0", JobEnd::kDifference,
       true, true, true},
      {"skipped although different", "ab\n", "cd\n", "", true, "    ﾌｧｲﾙ日時ｻｲｽﾞ変更なし(SKIP)",
       JobEnd::kNoDifference, false, false, false},
      {"same time, other size", "ab\n", "abc\n", "", true,
       "    UnMatch=    1 OLD=    1 NEW=    1 Rep=    1 Add=    0 Del=    0", JobEnd::kDifference,
       true, true, true},
      {"skip rule off", "ab\n", "cd\n", "OptNoCngNoOut=0", true,
       "    UnMatch=    1 OLD=    1 NEW=    1 Rep=    1 Add=    0 Del=    0", JobEnd::kDifference,
       true, true, true},
      {"both empty", "", "", "", false, "    変更なし   Old(New)=    0", JobEnd::kNoDifference,
       true, true, true},
  };
  for (const Case& c : cases) {
    PairRun run(c.old_bytes, c.new_bytes);
    if (c.same_time) SetModified(run.job.files.NewPath, test::kTestTime);
    run.SetAll(c.settings);
    run.folder.Write("out.lst", "an older listing");
    run.WantSideOutputs();
    EXPECT_EQ(run.Compare(), c.result) << c.name;
    EXPECT_EQ(run.services.end(), c.end) << c.name;
    EXPECT_EQ(FileExists(run.job.files.OutPath), c.listing) << c.name;
    EXPECT_EQ(FileExists(run.job.files.SbnPath), c.difference_file) << c.name;
    EXPECT_EQ(FileExists(run.job.files.MrgPath), c.merge_source) << c.name;
  }
}

TEST(PairDriver, OneNanosecondIsAnotherTime) {
  PairRun run("ab\n", "cd\n");
  SetModified(run.job.files.OldPath, test::kTestTime, 1);
  SetModified(run.job.files.NewPath, test::kTestTime, 2);
  EXPECT_EQ(run.Compare().substr(0, 12), "    UnMatch=");
}

TEST(PairDriver, TellsWhatCannotBeOpened) {
  struct Case {
    const char* name;
    NativePath JobFiles::*path;
    const char* value;  // below the test's folder unless it begins with "/"
    const char* message;
    bool listing;
  };
  const Case cases[] = {
      {"missing old", &JobFiles::OldPath, "none",
       "OLD Open Error: INFILE:ファイルが見つかりません\r\n", false},
      {"missing new", &JobFiles::NewPath, "none",
       "NEW Open Error: INFILE:ファイルが見つかりません\r\n", false},
      {"device", &JobFiles::NewPath, "/dev/zero",
       "NEW Open Error: INFILE:ファイルではなくデバイスまたはソケットです\r\n", false},
      {"folder", &JobFiles::OldPath, "/tmp",
       "OLD Open Error: INFILE:ファイルではなくフォルダです\r\n", false},
      {"listing", &JobFiles::OutPath, "no/out.lst",
       "List Open Error: OUTPUT:ファイルが見つかりません\r\n", false},
      {"difference file", &JobFiles::SbnPath, "no/out.sbn",
       "Sbn List Open Error: OUTPUT:ファイルが見つかりません\r\n", true},
      {"merge source", &JobFiles::MrgPath, "/tmp",
       "Merge Source Open Error: OUTPUT:フォルダです\r\n", true},
  };
  for (const Case& c : cases) {
    PairRun run("a\n", "b\n");
    run.WantSideOutputs();
    NativePath& path = run.job.files.*c.path;
    path = c.value[0] == '/' ? NativePath(c.value) : run.folder.At(c.value);
    EXPECT_EQ(run.Compare(), "    エラー") << c.name;
    EXPECT_EQ(run.platform.messages, (Texts{c.message + path.bytes()})) << c.name;
    EXPECT_EQ(run.services.end(), JobEnd::kTrouble) << c.name;
    EXPECT_EQ(FileExists(run.folder.At("out.lst")), c.listing) << c.name;
    EXPECT_EQ(test::ReadFile(run.folder.At("out.lst")), "") << c.name;
  }
}

TEST(PairDriver, RefusesAnOutputThatIsAnInputOrAnotherOutput) {
  struct Case {
    const char* name;
    NativePath JobFiles::*path;
    const char* value;
    const char* title;
  };
  const Case cases[] = {
      {"listing is the old file", &JobFiles::OutPath, "old.txt", "List Open Error"},
      {"listing is a link to the new file", &JobFiles::OutPath, "link", "List Open Error"},
      {"merge source is a hard link to the old file", &JobFiles::MrgPath, "hard",
       "Merge Source Open Error"},
      {"difference file is the listing", &JobFiles::SbnPath, "out.lst", "Sbn List Open Error"},
      {"merge source is the listing by another path", &JobFiles::MrgPath, "./out.lst",
       "Merge Source Open Error"},
  };
  for (const Case& c : cases) {
    PairRun run("a\n", "a\n");
    SetModified(run.job.files.NewPath, test::kTestTime);  // the skip rule would remove the listing
    ASSERT_EQ(symlink(run.job.files.NewPath.c_str(), run.folder.At("link").c_str()), 0);
    ASSERT_EQ(link(run.job.files.OldPath.c_str(), run.folder.At("hard").c_str()), 0);
    run.WantSideOutputs();
    run.job.files.*c.path = run.folder.At(c.value);
    EXPECT_EQ(run.Compare(), "    エラー") << c.name;
    ASSERT_EQ(run.platform.messages.size(), 1u) << c.name;
    EXPECT_EQ(run.platform.messages[0].find(std::string(c.title) + ": OUTPUT:"), 0u) << c.name;
    EXPECT_EQ(test::ReadFile(run.job.files.OldPath), "a\n") << c.name;
    EXPECT_EQ(test::ReadFile(run.job.files.NewPath), "a\n") << c.name;
  }
}

TEST(PairDriver, AFailedWriteRemovesEveryOutputOfThePair) {
  for (NativePath JobFiles::*const path :
       {&JobFiles::OutPath, &JobFiles::SbnPath, &JobFiles::MrgPath}) {
    PairRun run("a\nb\n", "a\nc\n");
    run.WantSideOutputs();
    run.job.files.*path = NativePath("/dev/full");
    EXPECT_EQ(run.Compare(), "    エラー");
    EXPECT_EQ(run.platform.troubles, (Texts{"/dev/full: ディスクの空き容量が足りません"}));
    EXPECT_TRUE(run.platform.messages.empty());
    EXPECT_EQ(run.services.end(), JobEnd::kTrouble);
    for (const char* name : {"out.lst", "out.sbn", "out.mrg"}) {
      EXPECT_FALSE(FileExists(run.folder.At(name))) << name;
    }
    EXPECT_TRUE(FileExists(NativePath("/dev/full")));
  }
}

TEST(PairDriver, AStopAtAnyYieldLeavesNoSummary) {
  const std::string old_bytes = File(Numbered(1, 30));
  const std::string new_bytes = File(Numbered(1, 10) + Texts{"x"} + Numbered(12, 30));
  PairRun whole(old_bytes, new_bytes);
  whole.Compare();
  const int yields = whole.platform.yields;
  ASSERT_GT(yields, 30);
  for (int stop = 1; stop <= yields; ++stop) {
    PairRun run(old_bytes, new_bytes);
    run.WantSideOutputs();
    run.platform.stop_at_yield = stop;
    EXPECT_EQ(run.Compare(), "    中断") << stop;
    EXPECT_EQ(run.services.end(), JobEnd::kTrouble) << stop;
    // The first four surround the reading of the two files.
    if (stop <= 4) {
      EXPECT_FALSE(FileExists(run.job.files.OutPath));
      continue;
    }
    const Texts lines = run.Listing();
    ASSERT_GE(lines.size(), 6u) << stop;
    EXPECT_EQ(lines.back().find("合計"), std::string::npos) << stop;
    for (const std::string& line : lines) EXPECT_EQ(line.find("行数増減"), std::string::npos);
    for (const std::string& line : ReadLines(run.job.files.SbnPath)) {
      EXPECT_EQ(line.find("END"), std::string::npos);
    }
  }
}

TEST(SideOutputs, HoldWhatThePairDecided) {
  PairRun run("a\nb\nc\nd \ne\n", "A\nx\nd\ne\n");
  run.WantSideOutputs();
  run.Set("OptUpperCase", "0");
  run.Set("OptMatch", "1");
  run.job.outputs.MergeMarks = true;
  run.Compare();
  EXPECT_EQ(ReadLines(run.job.files.MrgPath), (Texts{"=n:A", "/n:x", "<o:c", "=n:d", "=n:e"}));
  const Texts difference = ReadLines(run.job.files.SbnPath);
  ASSERT_EQ(difference.size(), 8u);
  EXPECT_EQ(difference[0], "<< 差分ファイル >>    出力：2024/03/09 14:05");
  EXPECT_EQ(difference[1], "OLD = " + run.job.files.OldPath.bytes());
  EXPECT_EQ(difference[2], "NEW = " + run.job.files.NewPath.bytes());
  EXPECT_EQ(difference[3].substr(80), "----+----9(S001)");
  EXPECT_EQ(difference[4], "x");
  EXPECT_EQ(difference[5], "");
  EXPECT_EQ(difference[6].substr(80), "----+----9(E001)");
  EXPECT_EQ(difference[7], "<< END >>    変更(     1)  追加(     0)  削除(     1)  合計(     2)");

  run.Set("MergeOld", "1");
  run.Set("OptSimple", "1");
  run.Compare();
  EXPECT_EQ(ReadLines(run.job.files.MrgPath), (Texts{"=o:a", "/o:b", "<o:c", "=o:d", "=o:e"}));
  EXPECT_EQ(ReadLines(run.job.files.SbnPath).back(),
            "<< END >>    変更(1)  追加(0)  削除(1)  合計(2)");

  run.job.outputs.MergeMarks = false;
  run.Compare();
  EXPECT_EQ(ReadLines(run.job.files.MrgPath), (Texts{"a", "b", "c", "d", "e"}));
}

TEST(RunJob, WritesTheCsvSummaryOfASinglePair) {
  PairRun run("a\nb\n", "a\nc\n");
  run.job.outputs.OptCsvList = true;
  run.Run();
  const std::string listing = run.folder.At("old_txt_COMP.TXT").bytes();
  const std::string csv = run.folder.At("Ledrix.CSV").bytes();
  EXPECT_EQ(run.front_end.results,
            (Texts{"( 1 Compare ) " + listing,
                   "    UnMatch=    1 OLD=    2 NEW=    2 Rep=    1 Add=    0 Del=    0",
                   "( 2 Compare ) " + csv, "     Total File Count=    1"}));
  EXPECT_EQ(ReadLines(run.folder.At("Ledrix.CSV")),
            (Texts{"No.,OldFileName,OldStep,NewFileName,NewStep,Rep,Add,Del,Total",
                   "1," + run.job.files.OldPath.bytes() + ",2," + run.job.files.NewPath.bytes() +
                       ",2,1,0,0,1"}));
}

TEST(RunJob, RefusesACsvSummaryThatIsAnInput) {
  PairRun run("a\n", "b\n");
  run.job.outputs.OptCsvList = true;
  run.Set("ComboCSVName", "new.txt");
  run.Run();
  EXPECT_EQ(run.platform.messages.size(), 1u);
  EXPECT_TRUE(run.front_end.results.empty());
  EXPECT_EQ(run.services.end(), JobEnd::kTrouble);
  EXPECT_EQ(test::ReadFile(run.job.files.NewPath), "b\n");
}

}  // namespace
}  // namespace ledrix::modComp
