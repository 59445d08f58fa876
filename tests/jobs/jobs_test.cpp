#include <gtest/gtest.h>

#include <map>

#include "jobs/output_names.h"
#include "support/test_run.h"
#include "text/name_pattern.h"

namespace ledrix {
namespace {

using test::TestRun;

TEST(NamePattern, MatchesAsTheTableSays) {
  for (const auto& row : test::ReadTable("name_patterns.tsv")) {
    EXPECT_EQ(MatchesPattern(row[0], row[1], LetterCase::kIgnore), row[2] == "yes")
        << row[0] << " / " << row[1];
  }
  EXPECT_FALSE(MatchesPattern("a.TXT", "*.txt", LetterCase::kRespect));
  // Many stars must not take exponential time.
  std::string stars;
  for (int i = 0; i < 50; ++i) stars += "*a";
  EXPECT_FALSE(MatchesPattern(std::string(5000, 'a') + "b", stars, LetterCase::kIgnore));
}

TEST(OutputNames, FollowTheOutputFolderAndTheOldName) {
  const std::map<std::string, OutputDirMode> modes = {{"old", OutputDirMode::kOldDir},
                                                      {"new", OutputDirMode::kNewDir},
                                                      {"else", OutputDirMode::kElse},
                                                      {"constant", OutputDirMode::kConstant}};
  for (const auto& row : test::ReadTable("output_names.tsv")) {
    TestRun run;
    run.options.ContOutDirPath = "/fixed";
    run.options.ComboLstSbn = "*-*.SBN";
    OutputChoices choices;
    choices.ElseOutputDir = NativePath("/else/");
    choices.OutputDirMode = modes.at(row[1]);
    choices.OptSbnList = choices.OptMrgSrc = true;
    const auto make = [&] {
      return MakeOutputNames(run.options, choices, NativePath(row[2]), NativePath(row[3]),
                             row[0] == "windows" ? PathStyle::kWindows : PathStyle::kPosix);
    };
    EXPECT_EQ(make().OutPath.bytes(), row[4]);
    EXPECT_EQ(make().SbnPath.bytes(), row[5]);
    EXPECT_EQ(make().MrgPath.bytes(), row[6]);
    choices.OptSbnList = choices.OptMrgSrc = false;
    EXPECT_TRUE(make().SbnPath.empty() && make().MrgPath.empty());
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
    run.job.request.JobKind = kind;
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

TEST(RunServices, CsvSummaryHoldsStatusesOnlyWithTheOption) {
  const test::TempFolder folder;
  const NativePath old_path("/旧/a.TXT");
  const NativePath new_path("/n,/a.TXT");
  for (const bool with_status : {true, false}) {
    TestRun run;
    run.Set("CsvStatus", with_status ? "1" : "0");
    run.Set("NoPattern", ";*.txt");
    EXPECT_TRUE(run.services.IsExcludedType("a.TXT"));
    EXPECT_FALSE(run.services.IsExcludedType("a.c"));
    const NativePath csv = run.services.CsvSummaryPath(folder.At("a_TXT_COMP.TXT"));
    EXPECT_EQ(csv, folder.At("Ledrix.CSV"));
    ASSERT_TRUE(run.services.OpenCsvSummary(csv));
    run.services.WriteCsvStatus({old_path, new_path}, "対象外ﾌｧｲﾙﾀｲﾌﾟ");
    run.services.WriteCsvCounts({old_path, new_path}, {120, 123, 2, 4, 1});
    run.services.CloseCsvSummary(5);

    std::vector<std::string> expected = {
        "No.,OldFileName,OldStep,NewFileName,NewStep,Rep,Add,Del,Total"};
    if (with_status) expected.push_back("1,/旧/a.TXT,-,/n,/a.TXT,対象外ﾌｧｲﾙﾀｲﾌﾟ");
    expected.push_back(std::string(with_status ? "2" : "1") +
                       ",/旧/a.TXT,120,/n,/a.TXT,123,2,4,1,7");
    EXPECT_EQ(test::ReadLines(csv), expected);
    EXPECT_EQ(run.front_end.results, (std::vector<std::string>{"( 1 Compare ) " + csv.bytes(),
                                                               "     Total File Count=    5"}));
  }
}

TEST(RunServices, ACsvSummaryThatCannotBeWrittenIsReported) {
  TestRun run;
  EXPECT_FALSE(run.services.OpenCsvSummary(NativePath("/nowhere/Ledrix.CSV")));
  EXPECT_EQ(run.platform.messages,
            (std::vector<std::string>{"CSV File Open Error: ファイルが見つかりません"}));
  run.platform.troubles.clear();

  ASSERT_TRUE(run.services.OpenCsvSummary(NativePath("/dev/full")));
  run.services.CloseCsvSummary(1);
  EXPECT_EQ(run.front_end.results.back(), "    エラー");
  EXPECT_EQ(run.platform.troubles,
            (std::vector<std::string>{"/dev/full: ディスクの空き容量が足りません"}));
  EXPECT_EQ(run.services.end(), JobEnd::kTrouble);
}

}  // namespace
}  // namespace ledrix
