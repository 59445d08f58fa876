#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "jobs/file_sides.h"
#include "support/test_run.h"
#include "text/ascii.h"

namespace ledrix {
namespace {

using test::FileExists;
using test::ReadLines;
using test::TempFolder;
using test::TestRun;
using Texts = std::vector<std::string>;

FileList List(std::string_view names) {  // "+a b": a selected, b not
  FileList list;
  for (const std::string& name : SplitAt(names, ' ')) {
    if (name.empty()) continue;
    const bool selected = name[0] == '+';
    list.entries.push_back({selected ? name.substr(1) : name, selected});
  }
  return list;
}

TEST(CheckPairSelection, TellsWhatIsMissing) {
  for (const auto& row : test::ReadTable("pair_selections.tsv")) {
    TestRun run;
    run.sides[Side::kOld] = {NativePath("/o/"), "", List(row[0])};
    run.sides[Side::kNew] = {NativePath(row[2]), "", List(row[1])};
    EXPECT_EQ(CheckPairSelection(run.sides, run.platform), row[3].empty());
    EXPECT_EQ(run.platform.messages, row[3].empty() ? Texts{} : Texts{"Ledrix: " + row[3]});
  }
}

TEST(FileSides, SelectNamesakesAndReadFilters) {
  FileSides sides;
  sides[Side::kOld].files = List("+A +b c +B");
  sides[Side::kNew].files = List("a +x B b");
  SelectNamesakes(sides[Side::kOld].files, sides[Side::kNew].files);
  const auto selected = [](const FileList& list) {
    Texts names;
    for (const auto& entry : list.entries) {
      if (entry.selected) names.push_back(entry.name);
    }
    return names;
  };
  EXPECT_EQ(selected(sides[Side::kNew].files), (Texts{"a", "B", "b"}));
  SelectAllNamesakes(sides);
  EXPECT_EQ(selected(sides[Side::kOld].files), (Texts{"A", "b", "B"}));
  sides[Side::kOld].files = List("a A b B");
  sides[Side::kNew].files = List("A b");
  SelectAllNamesakes(sides);
  EXPECT_EQ(selected(sides[Side::kOld].files), (Texts{"A", "b"}));

  OptionRecord options;
  options.FPatternTtl[1] = "  ";
  options.FPatternTtl[2] = " My (x) ";
  options.FPattern[2] = " *.m ";
  EXPECT_EQ(FilterEntries(options, Side::kOld),
            (Texts{"旧ﾌｧｲﾙ (*.OLD;*.BAK)", "CBLｿｰｽ (*.CBL;*.COB)", "My (x) (*.m)",
                   "ﾃﾞｨﾚｸﾄﾘ情報ﾌｧｲﾙ (*.ddf)", "全て (*.*)"}));
  EXPECT_EQ(FilterEntries(options, Side::kNew)[0], "新ﾌｧｲﾙ (*.NEW)");
  EXPECT_EQ(FilterPatterns("CBLｿｰｽ (*.CBL;*.COB)"), "*.CBL;*.COB");
  EXPECT_EQ(FilterPatterns("My (x) (*.m)"), "x) (*.m");
  EXPECT_EQ(FilterPatterns("none"), "");
}

// Two folders with files that are the same, differ and are excluded.
struct FolderRun : TestRun {
  TempFolder folder;
  TempFolder program;
  RunLog run_log{NativePath(program.path() + "/"), platform};

  FolderRun() {
    for (const char* side : {"old", "new"}) {
      std::filesystem::create_directory(folder.At(side).bytes());
      for (const char* name : {"a.CBL", "b.CBL", "c.exe"}) {
        const std::string path =
            std::string(side) + "/" + (side[0] == 'n' && name[0] == 'b' ? "B.cbl" : name);
        folder.Write(path, name[0] == 'b' ? std::string(side) : "same");
        test::SetModified(folder.At(path), test::kTestTime + (side[0] == 'n' ? 60 : 0));
      }
    }
    request.OldPath = folder.At("old/");
    request.NewPath = folder.At("new/");
    job.outputs.OutputDirMode = OutputDirMode::kElse;
    job.outputs.ElseOutputDir = NativePath(folder.path());
    job.outputs.OptCsvList = true;
    request.FileCount = 3;
    sides[Side::kOld] = {request.OldPath, "", List("+a.CBL +b.CBL +c.exe")};
    sides[Side::kNew] = {request.NewPath, "", List("+a.CBL +B.cbl +c.exe")};
    log = &run_log;
  }
  std::string Path(const char* name) const { return folder.At(name).bytes(); }
};

TEST(MultipleCompare, ComparesEverySelectedPair) {
  FolderRun run;
  run.Run();
  EXPECT_EQ(run.front_end.results,
            (Texts{"( 1 Compare ) " + run.Path("a_CBL_COMP.TXT"), "    変更なし   Old(New)=    1",
                   "( 2 Compare ) " + run.Path("b_CBL_COMP.TXT"),
                   "    UnMatch=    1 OLD=    1 NEW=    1 Rep=    1 Add=    0 Del=    0",
                   "( 3 Compare ) " + run.Path("c_exe_COMP.TXT"), "    c.exe対象外ﾌｧｲﾙﾀｲﾌﾟ  ",
                   "( 4 Compare ) " + run.Path("Ledrix.CSV"), "     Total File Count=    3"}));
  EXPECT_EQ(run.front_end.messages.at(1), "複数コンペア （ 3 ファイル ） を実行中\r( 2 ) b.CBL");
  const std::string o = run.Path("old/");
  const std::string n = run.Path("new/");
  EXPECT_EQ(ReadLines(run.folder.At("Ledrix.CSV")),
            (Texts{"No.,OldFileName,OldStep,NewFileName,NewStep,Rep,Add,Del,Total",
                   "1," + o + "a.CBL,-," + n + "a.CBL,変更なし   Old(New)=    1",
                   "2," + o + "b.CBL,1," + n + "B.cbl,1,1,0,0,1",
                   "3," + o + "c.exe,-," + n + "c.exe,対象外ﾌｧｲﾙﾀｲﾌﾟ"}));
  EXPECT_EQ(run.services.end(), JobEnd::kDifference);
  EXPECT_EQ(ReadLines(run.program.At("Ledrixr.Log")),
            (Texts{run.folder.path() + "/,2024/03/09 14:05:07", n + ",2024/03/09 14:05:07",
                   o + ",2024/03/09 14:05:07"}));
}

TEST(MultipleCompare, AStopAtAnyYieldAddsNoTotal) {
  FolderRun whole;
  whole.Run();
  for (int stop = 2; stop <= whole.platform.yields; ++stop) {
    FolderRun run;
    run.platform.stop_at_yield = stop;
    run.Run();
    EXPECT_EQ(run.services.end(), JobEnd::kTrouble) << stop;
    EXPECT_EQ(run.front_end.results.back().find("Total"), std::string::npos) << stop;
    EXPECT_TRUE(FileExists(run.folder.At("Ledrix.CSV"))) << stop;
    EXPECT_EQ(ReadLines(run.program.At("Ledrixr.Log")).size(), 3u) << stop;
  }
}

TEST(MultipleCompare, NoOutputOverwritesAFileOfALaterPair) {
  FolderRun run;
  run.Set("ComboCSVName", "old/b.CBL");
  run.Run();
  EXPECT_EQ(run.platform.messages.size(), 1u);
  EXPECT_EQ(run.front_end.results.size(), 0u);
  EXPECT_EQ(test::ReadFile(run.folder.At("old/b.CBL")), "old");
}

TEST(RunLog, KeepsTheNewestUseOfExistingFolders) {
  const TempFolder folder;
  TestRun run;
  RunLog log(NativePath(folder.path() + "/"), run.platform);
  std::string lines;
  Texts names;
  for (int i = 0; i < 60; ++i) {
    const std::string name = folder.path() + "/d" + std::to_string(100 + i) + "/";
    std::filesystem::create_directory(name);
    names.push_back(name);
    lines += name + ",2024/03/0" + std::to_string(1 + i % 8) + " 10:00:00\r\n";
  }
  std::filesystem::create_directory(folder.path() + "/D100");
  std::filesystem::create_directory(folder.path() + "/with,comma");
  lines += folder.path() + "/D100/,2024/03/09 14:00:00\r\n" + folder.path() +
           "/with,comma/,2024/02/08 23:59:59\r\n" + names[5] + ",2024/02/07 00:00:00\r\n" +
           folder.path() + "/gone/,2024/03/09 10:00:00\r\nnonsense\r\n" + names[3] +
           ",2024/13/01 10:00:00\r\n\x81" + folder.path() + '\0' + "x/,2024/03/09 10:00:00\r\n";
  folder.Write("Ledrixr.Log", lines);
  const std::vector<HistoryEntry> history = log.LoadHistory();
  EXPECT_EQ(history.size(), 62u);
  EXPECT_EQ(history[0].folder.bytes(), names[0]);  // of one folder the older use comes first
  EXPECT_EQ(history[1].folder.bytes(), folder.path() + "/D100/");
  EXPECT_EQ(history.back().folder.bytes(), folder.path() + "/with,comma/");

  log.CompactHistory();
  const Texts compacted = ReadLines(folder.At("Ledrixr.Log"));
  ASSERT_EQ(compacted.size(), 50u);
  EXPECT_EQ(compacted[0], folder.path() + "/D100/,2024/03/09 14:00:00");
  for (const std::string& line : compacted) {
    EXPECT_EQ(line.find("/d100/"), std::string::npos);
    EXPECT_EQ(line.find(",2024/02/08"), std::string::npos);
  }
  log.SaveHistory({});
  EXPECT_EQ(test::ReadFile(folder.At("Ledrixr.Log")), "");
}

TEST(RunJob, ClearsTheResultsAndWritesTheDebugLogWhenTold) {
  FolderRun run;
  run.Set("OutListClear", "1");
  run.Run();
  EXPECT_FALSE(FileExists(run.program.At("ldxdebug.log")));
  run.job.DebugLog = true;
  run.request.OldPath = run.folder.At("old/c.exe");
  run.Run();
  EXPECT_EQ(run.front_end.results.at(0).substr(0, 14), "( 1 Compare ) ");
  EXPECT_EQ(run.front_end.results.size(), 8u);
  EXPECT_EQ(ReadLines(run.program.At("ldxdebug.log")),
            (Texts{"2024/03/09 14:05:07 >> c >> 50707 <- 0.00 -> 50707 ///// 0"}));
}

TEST(JobMessage, TellsWhatWillBeDone) {
  const std::map<std::string, JobKind> kinds = {{"compare", JobKind::kComp},
                                                {"steps", JobKind::kStepCnt},
                                                {"steps csv", JobKind::kStepCsv},
                                                {"snapshot", JobKind::kDirEdit},
                                                {"dircomp", JobKind::kDirComp}};
  for (const auto& row : test::ReadTable("job_messages.tsv")) {
    TestRun run;
    run.request.JobKind = kinds.at(row[0]);
    run.request.FileCount = std::stoi(row[1]);
    run.request.OldPath = NativePath(row[2]);
    run.request.NewPath = NativePath(row[3]);
    if (row[0] != "compare") run.request.OutPath = NativePath("/out/x.lst");
    run.request.CompareRange = CompareRange::kNoPath;
    EXPECT_EQ(JobCaption(run.request), row[4]);
    BeginJob(run.job, run.request);
    EXPECT_EQ(JobMessage(run.options, run.job), row[5]);
  }
}

}  // namespace
}  // namespace ledrix
