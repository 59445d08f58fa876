#include <gtest/gtest.h>

#include "jobs/output_names.h"
#include "support/test_run.h"
#include "text/name_pattern.h"

namespace ledrix {
namespace {

using test::TestRun;

TEST(NamePattern, MatchesAsTheTableSays) {
  struct Case {
    const char* name;
    const char* pattern;
    bool matches;  // without regard to case
  };
  const Case cases[] = {
      {"a.TXT", "*.txt", true},
      {"a.txt", "*.tx", false},
      {"abc", "a?c", true},
      {"ac", "a?c", false},
      {"v7", "v#", true},
      {"vx", "v#", false},
      {"v７", "v#", false},
      {"b", "[abc]", true},
      {"d", "[abc]", false},
      {"d", "[!abc]", true},
      {"B", "[!abc]", false},
      {"b", "[a-c]", false},
      {"-", "[a-c]", true},
      {"a[b", "a[b", true},
      {"ab", "a[]b", false},
      {"!", "[!]", true},
      {"", "", true},
      {"x", "", false},
      {"", "***", true},
      {"aXbXc", "*X*c", true},
      {"main.c", "main*.*", true},
      {"日本語.CBL", "??語.cbl", true},
      {"ＡＢ", "ａｂ", true},
      {"表.txt", "*\\*", false},
      {"x\xFFy", "x?y", true},
      {"x\xFFy", "x\xFEy", false},
      {"a*b", "a[*]b", true},
      {"axb", "a[*]b", false},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(MatchesPattern(c.name, c.pattern, LetterCase::kIgnore), c.matches)
        << c.name << " / " << c.pattern;
  }
  EXPECT_FALSE(MatchesPattern("a.TXT", "*.txt", LetterCase::kRespect));
  // Many stars must not take exponential time.
  std::string stars;
  for (int i = 0; i < 50; ++i) stars += "*a";
  EXPECT_FALSE(MatchesPattern(std::string(5000, 'a') + "b", stars, LetterCase::kIgnore));
}

TEST(OutputNames, FollowTheOutputFolderAndTheOldName) {
  struct Case {
    PathStyle style;
    OutputDirMode mode;
    const char* old_path;
    const char* new_path;
    const char* listing;
    const char* difference_file;
    const char* merge_source;
  };
  constexpr auto kWin = PathStyle::kWindows;
  constexpr auto kPosix = PathStyle::kPosix;
  const Case cases[] = {
      {kWin, OutputDirMode::kOldDir, "C:\\src\\a.b.txt", "D:\\x\\n.c", "C:\\src\\a_b_txt_COMP.TXT",
       "C:\\src\\a_b_txt-a_b_txt.SBN", "C:\\src\\a.b_MRG.txt"},
      {kPosix, OutputDirMode::kNewDir, "/o/a.c", "/n/b.c", "/n/b_c_COMP.TXT", "/n/b_c-b_c.SBN",
       "/n/a_MRG.c"},
      {kPosix, OutputDirMode::kElse, "/o/a.c", "/n/b.c", "/else/a_c_COMP.TXT", "/else/a_c-a_c.SBN",
       "/else/a_MRG.c"},
      {kPosix, OutputDirMode::kConstant, "/o/noext", "/n/b.c", "/fixed/noext_COMP.TXT",
       "/fixed/noext-noext.SBN", "/fixed/noext_MRG"},
  };
  for (const Case& c : cases) {
    TestRun run;
    run.options.ContOutDirPath = "/fixed";
    run.options.ComboLstSbn = "*-*.SBN";
    run.job.ElseOutputDir = NativePath("/else/");
    run.job.OutputDirMode = c.mode;
    run.job.OptSbnList = run.job.OptMrgSrc = true;
    const auto make = [&] {
      return MakeOutputNames(run.options, run.job, NativePath(c.old_path), NativePath(c.new_path),
                             c.style);
    };
    EXPECT_EQ(make().bytes(), c.listing);
    EXPECT_EQ(run.job.SbnPath.bytes(), c.difference_file);
    EXPECT_EQ(run.job.MrgPath.bytes(), c.merge_source);
    run.job.OptSbnList = run.job.OptMrgSrc = false;
    make();
    EXPECT_TRUE(run.job.SbnPath.empty() && run.job.MrgPath.empty());
  }
}

TEST(SelectedFileName, PrefersTheCurrentEntryWhenItIsSelected) {
  FileList list{{{"a", false}, {"b", true}, {"c", true}}, 2};
  EXPECT_EQ(SelectedFileName(list), "c");
  list.current = 0;
  EXPECT_EQ(SelectedFileName(list), "b");
  list.current = 99;
  EXPECT_EQ(SelectedFileName(list), "b");
  list.entries[1].selected = list.entries[2].selected = false;
  EXPECT_EQ(SelectedFileName(list), "");
}

TEST(RunServices, NumbersResultEntries) {
  TestRun run;
  const NativePath path("/out/x.TXT");
  const auto entry_at = [&](int16_t counter_before) {
    run.job.RunCounter = counter_before;
    run.front_end.results.clear();
    run.services.AddResultLines(path, "message");
    return run.front_end.results.at(0);
  };
  EXPECT_EQ(entry_at(0), "( 1 Compare ) /out/x.TXT");
  EXPECT_EQ(run.front_end.results.at(1), "    message");
  EXPECT_EQ(entry_at(11), "(12 Compare ) /out/x.TXT");
  EXPECT_EQ(entry_at(99), "(00 Compare ) /out/x.TXT");
  EXPECT_EQ(entry_at(32767), "(67 Compare ) /out/x.TXT");
  for (const auto& [kind, label] :
       {std::pair(JobKind::kStepCnt, " StepCnt "), std::pair(JobKind::kStepCsv, " StepCSV "),
        std::pair(JobKind::kDirEdit, " DirEdit "), std::pair(JobKind::kDirComp, " DirComp ")}) {
    run.job.JobKind = kind;
    EXPECT_EQ(entry_at(4), "( 5" + std::string(label) + ") /out/x.TXT");
  }
  run.job.GuiMode = false;
  run.job.RunCounter = 4;
  run.front_end.results.clear();
  run.services.AddResultLines(path, "message");
  EXPECT_EQ(run.job.RunCounter, 5);
  EXPECT_TRUE(run.front_end.results.empty());
}

TEST(RunServices, ProgressStopsAtTheWholeBar) {
  TestRun run;
  for (const double count : {0.0, 5.0, 10.0, 11.0}) run.services.UpdateProgress(565.5, count);
  EXPECT_EQ(run.front_end.progress, (std::vector<double>{-5655, -2827.5, 0, 0}));
}

TEST(RunServices, CsvSummaryHoldsExcludedPairsOnlyWithTheStatusOption) {
  const test::TempFolder folder;
  for (const bool with_status : {true, false}) {
    TestRun run;
    run.Set("CsvStatus", with_status ? "1" : "0");
    run.Set("NoPattern", ";*.txt");
    run.job.OptCsvList = true;
    run.job.OldPath = NativePath("/旧/a.TXT");
    run.job.NewPath = NativePath("/n,/a.TXT");
    run.job.OutPath = folder.At("a_TXT_COMP.TXT");
    run.job.CsvPath = run.services.CsvSummaryPath(run.job.OutPath);
    EXPECT_EQ(run.job.CsvPath, folder.At("Ledrix.CSV"));
    ASSERT_TRUE(run.services.OpenCsvSummary());
    EXPECT_TRUE(run.services.IsExcludedType("a.TXT"));
    EXPECT_FALSE(run.services.IsExcludedType("a.c"));
    run.services.WriteCsvCounts({120, 123, 2, 4, 1});
    run.services.CloseCsvSummary(5);

    std::vector<std::string> expected = {
        "No.,OldFileName,OldStep,NewFileName,NewStep,Rep,Add,Del,Total"};
    if (with_status) expected.push_back("1,/旧/a.TXT,-,/n,/a.TXT,対象外ﾌｧｲﾙﾀｲﾌﾟ");
    expected.push_back(std::string(with_status ? "2" : "1") +
                       ",/旧/a.TXT,120,/n,/a.TXT,123,2,4,1,7");
    EXPECT_EQ(test::ReadLines(run.job.CsvPath), expected);
    EXPECT_EQ(run.front_end.results,
              (std::vector<std::string>{
                  "( 1 Compare ) " + run.job.OutPath.bytes(), "    a.TXT対象外ﾌｧｲﾙﾀｲﾌﾟ  ",
                  "( 2 Compare ) " + run.job.CsvPath.bytes(), "     Total File Count=    5"}));
  }
}

TEST(RunServices, ACsvSummaryThatCannotBeWrittenIsReported) {
  TestRun run;
  run.job.CsvPath = NativePath("/nowhere/Ledrix.CSV");
  EXPECT_FALSE(run.services.OpenCsvSummary());
  EXPECT_EQ(run.platform.messages,
            (std::vector<std::string>{"CSV File Open Error: ファイルが見つかりません"}));
  run.platform.troubles.clear();

  run.job.CsvPath = NativePath("/dev/full");
  ASSERT_TRUE(run.services.OpenCsvSummary());
  run.services.CloseCsvSummary(1);
  EXPECT_EQ(run.front_end.results.back(), "    エラー");
  EXPECT_EQ(run.platform.troubles,
            (std::vector<std::string>{"/dev/full: ディスクの空き容量が足りません"}));
  EXPECT_EQ(run.services.end(), JobEnd::kTrouble);
}

}  // namespace
}  // namespace ledrix
