#include "stepcount/step_jobs.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "stepcount/line_counter.h"
#include "support/test_run.h"

namespace ledrix::modStep {
namespace {

using test::ReadLines;
using test::TempFolder;
using test::TestRun;
using Texts = std::vector<std::string>;

TEST(CountFileLines, LinesEndAtCarriageReturns) {
  struct Case {
    std::string bytes;
    int64_t lines;
  };
  std::string long_text;  // CR LF across the blocks of the reader
  for (int i = 0; i < 100000; ++i) long_text += "ab\r\n";
  const Case cases[] = {{"", 0},
                        {"\r\n", 1},
                        {"\r", 1},
                        {"\n", 1},
                        {"a\nb\nc", 1},
                        {"a\rb", 2},
                        {"a\r\n\r\n", 2},
                        {"a\r\r\nb\r\n", 3},
                        {"\r\n\n", 2},
                        {"x\r\ny", 2},
                        {std::string(131071, 'x') + "\r\n", 1},  // a block ends between them
                        {long_text, 100000},
                        {"x" + long_text, 100000},
                        {"xyz" + long_text + "w", 100001}};
  const TempFolder folder;
  for (const Case& c : cases) {
    TestRun run;
    const Result<int64_t> count = CountFileLines(run.services, folder.Write("f", c.bytes));
    ASSERT_TRUE(count.ok());
    EXPECT_EQ(count.value(), c.lines) << c.bytes.substr(0, 20);
  }
}

struct StepRun : TestRun {
  TempFolder folder;
  StepRun() {
    request.JobKind = JobKind::kStepCnt;
    std::string bytes;
    for (int i = 0; i < 1234; ++i) bytes += "line\r\n";
    request.OldPath = folder.Write("A.B.C", bytes);
    request.OutPath = folder.At("A_B_C_STP.TXT");
  }
};

TEST(StepCntJob, WritesItsListing) {
  StepRun run;
  run.Run();
  EXPECT_EQ(ReadLines(run.request.OutPath),
            (Texts{"--- STEP COUNTER ---", "2024/03/09 14:05:07",
                   "File Name  [ " + run.request.OldPath.bytes() + " ]", "STEP COUNT [ 1,234 ]"}));
  EXPECT_EQ(run.front_end.results,
            (Texts{"( 1 StepCnt ) " + run.request.OutPath.bytes(), "    LINE COUNT :  1234"}));
}

TEST(StepCntJob, CountsNothingAfterAStopOrWithoutAFile) {
  for (const bool stopped : {true, false}) {
    StepRun run;
    if (stopped) {
      run.platform.stop_at_yield = 100;
    } else {
      run.request.OldPath = run.folder.At("none");
    }
    run.Run();
    EXPECT_EQ(ReadLines(run.request.OutPath).back(), "STEP COUNT [ 0 ]");
    EXPECT_EQ(run.front_end.results.back(), "    LINE COUNT :  0");
    EXPECT_EQ(run.services.end(), JobEnd::kTrouble);
    EXPECT_TRUE(run.platform.messages.empty());
  }
}

TEST(StepCntJob, SparesItsInputAndReportsALostOutput) {
  for (const char* out : {"A.B.C", "no/x", "/dev/full"}) {
    StepRun run;
    run.request.OutPath = out[0] == '/' ? NativePath(out) : run.folder.At(out);
    run.Run();
    EXPECT_EQ(run.platform.troubles.size(), 1u) << out;
    EXPECT_EQ(run.services.end(), JobEnd::kTrouble) << out;
    EXPECT_EQ(test::ReadFile(run.folder.At("A.B.C")).size(), size_t{6} * 1234);
  }
}

struct CsvRun : TestRun {
  TempFolder folder;
  CsvRun() {
    request.JobKind = JobKind::kStepCsv;
    request.ActiveSide = Side::kNew;
    request.OldPath = NativePath(folder.path() + "/");
    request.OutPath = folder.At("STEP.CSV");
    folder.Write("a,b.CBL", "1\r\n2\r\n");
    folder.Write("表.CBL", "");
    std::filesystem::create_directory(folder.At("sub").bytes());
    for (const char* name : {"a,b.CBL", "sub", "表.CBL", "none"}) {
      sides[Side::kNew].files.entries.push_back({name, false});
    }
  }
};

TEST(StepCsvJob, WritesARowForEachFileOfTheList) {
  CsvRun run;
  run.Run();
  EXPECT_EQ(ReadLines(run.request.OutPath),
            (Texts{"DIR［ " + run.folder.path() + "/ ］ 2024/03/09 14:05:07",
                   "No.,File Name,STEP COUNT", "1,a,b.CBL,2", "2,表.CBL,0", "3,none,-"}));
  EXPECT_EQ(run.front_end.results.back(), "    FILE COUNT :  3");
  EXPECT_EQ(run.front_end.messages.at(0),
            "ＣＳＶ形式ファイル出力中\r" + run.folder.path() + "/a,b.CBL\r1 / 4 File");
  EXPECT_EQ(run.front_end.progress.back(), 5635.0 - 5655);
  EXPECT_EQ(run.services.end(), JobEnd::kTrouble);
}

TEST(StepCsvJob, AStopGivesTheFileARowOfZeroAndEnds) {
  CsvRun run;
  run.platform.stop_at_yield = 3;  // the job's own, a line, the next line
  run.Run();
  EXPECT_EQ(ReadLines(run.request.OutPath).size(), 3u);
  EXPECT_EQ(ReadLines(run.request.OutPath).back(), "1,a,b.CBL,0");
  EXPECT_EQ(run.front_end.results.back(), "    FILE COUNT :  1");
}

}  // namespace
}  // namespace ledrix::modStep
