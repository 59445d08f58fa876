#include "compare/pair_driver.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <map>
#include <regex>

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
    job.claims = {};
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
  const auto bytes = [](const std::string& lines) {
    return std::regex_replace(lines, std::regex(" / "), "\n") + "\n";
  };
  for (const auto& row : test::ReadTable("listing_blocks.tsv")) {
    PairRun run(bytes(row[1]), bytes(row[2]));
    run.SetAll(row[3]);
    run.Compare();
    std::string body;
    for (const std::string& line : Summary(run.Body())) body += (body.empty() ? "" : " / ") + line;
    EXPECT_EQ(body, row[4]) << row[0];
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

// Inputs with every kind of difference, long lines, characters at the wrap column and tabs.
TEST(Golden, ListingsAndSideOutputs) {
  const std::pair<std::string, const char*> cases[] = {
      {"box", "OptLstout=3"},
      {"box_odd_numbers", "PrintCompLen=71|LineNoAdd=1|OptLstout=3|MergeOld=1"},
      {"box_vertical", "OptOutLineVar=1|PrintCompLen=81|OptLstout=3"},
      {"box_vertical_numbers", "OptOutLineVar=1|LineNoAdd=1|PrintCompLen=70|OptLstout=3"},
      {"simple", "OptSimple=1|OptLstout=3|OptSpData=2|OptTABtoSPACE=1"},
      {"simple_odd", "OptSimple=1|PrintCompLen=73|OptLstout=3|OptSpData=0|MergeOld=1"},
      {"simple_vertical", "OptSimple=1|OptOutLineVar=1|OptLstout=3|PrintCompLen=72"},
      {"cut_all_lines", "NTypeNextLine=0|OptOutLineCnt=1|OptTABtoSPACE=1|PrintCompLen=72"},
      {"no_case_columns",
       "OptUpperCase=0|OptSTCol=7|OptEDCol=72|OptLstout=3|OptMatch=2|OptBuff=20"},
  };
  const std::string source = LEDRIX_GOLDEN_FOLDER "/compare/";
  for (const auto& [name, settings] : cases) {
    PairRun run(test::ReadFile(NativePath(source + "old.txt")),
                test::ReadFile(NativePath(source + "new.txt")));
    run.SetAll(settings);
    run.WantSideOutputs();
    run.job.outputs.MergeMarks = run.options.MergeOld == 1;
    run.Compare();
    for (const NativePath& output :
         {run.job.files.OutPath, run.job.files.SbnPath, run.job.files.MrgPath}) {
      test::ExpectGolden("compare/" + name + ExtensionOf(output), test::ReadFile(output),
                         run.folder);
    }
  }
}

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
  for (const auto& row : test::ReadTable("ended_pairs.tsv")) {
    PairRun run(row[0], row[1]);
    run.SetAll(row[2]);
    if (row[3] == "yes") SetModified(run.job.files.NewPath, test::kTestTime);
    run.folder.Write("out.lst", "an older listing");
    run.WantSideOutputs();
    EXPECT_EQ(run.Compare(), row[4]);
    const bool differs = row[4].find("UnMatch") != std::string::npos;
    EXPECT_EQ(run.services.end(), differs ? JobEnd::kDifference : JobEnd::kNoDifference) << row[4];
    std::string made;
    for (const std::string extension : {"lst", "sbn", "mrg"}) {
      if (FileExists(run.folder.At("out." + extension))) {
        made += (made.empty() ? "" : " ") + extension;
      }
    }
    EXPECT_EQ(made, row[5]) << row[4];
  }
}

TEST(PairDriver, OneNanosecondIsAnotherTime) {
  PairRun run("ab\n", "cd\n");
  SetModified(run.job.files.OldPath, test::kTestTime, 1);
  SetModified(run.job.files.NewPath, test::kTestTime, 2);
  ASSERT_EQ(mkdir(run.folder.At("sub").c_str(), 0777), 0);
  run.WantSideOutputs();
  run.job.files.SbnPath = run.folder.At("sub/out.lst");  // another file of the listing's name
  EXPECT_EQ(run.Compare().substr(0, 12), "    UnMatch=");
}

// Why a pair cannot be compared; inputs stay as they are.
TEST(PairDriver, TellsWhatCannotBeOpened) {
  const std::map<std::string, NativePath JobFiles::*> paths = {{"OldPath", &JobFiles::OldPath},
                                                               {"NewPath", &JobFiles::NewPath},
                                                               {"OutPath", &JobFiles::OutPath},
                                                               {"SbnPath", &JobFiles::SbnPath},
                                                               {"MrgPath", &JobFiles::MrgPath}};
  for (const auto& row : test::ReadTable("unusable_files.tsv")) {
    PairRun run("a\n", "b\n");
    ASSERT_EQ(symlink(run.job.files.NewPath.c_str(), run.folder.At("link").c_str()), 0);
    ASSERT_EQ(symlink("out.lst", run.folder.At("to-listing").c_str()), 0);
    ASSERT_EQ(link(run.job.files.OldPath.c_str(), run.folder.At("hard").c_str()), 0);
    run.WantSideOutputs();
    NativePath& path = run.job.files.*paths.at(row[0]);
    path = row[1][0] == '/' ? NativePath(row[1]) : run.folder.At(row[1]);
    EXPECT_EQ(run.Compare(), "    エラー") << row[1];
    EXPECT_EQ(run.platform.messages, Texts{row[2] + "\r\n" + path.bytes()});
    EXPECT_EQ(run.services.end(), JobEnd::kTrouble) << row[1];
    EXPECT_EQ(FileExists(run.folder.At("out.lst")), row[3] == "yes") << row[1];
    EXPECT_EQ(test::ReadFile(run.folder.At("out.lst")), "") << row[1];
    EXPECT_EQ(test::ReadFile(run.folder.At("old.txt")), "a\n") << row[1];
    EXPECT_EQ(test::ReadFile(run.folder.At("new.txt")), "b\n") << row[1];
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

}  // namespace
}  // namespace ledrix::modComp
