#include <gtest/gtest.h>

#include <filesystem>

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
  struct Case {
    const char* old_files;
    const char* new_files;
    const char* new_folder;
    const char* message;  // nullptr: accepted
  };
  const Case cases[] = {
      {"a", "+a", "/n/", "旧ファイルが未設定です"},
      {"+a", "a", "/n/", "新ファイルが未設定です"},
      {"+a", "+a", "/o/", "旧ファイルと新ファイルが重複しています\r\n[ /o/a ]"},
      {"+a", "+b", "/o/", nullptr},
      {"+a", "+A", "/O/", "旧ファイルと新ファイルが重複しています\r\n[ /o/a ]"},
      {"+a.txt +b.txt", "+A.TXT +b.txt", "/n/", nullptr},
      {"+a +b", "+A +b", "/o/", "旧ファイルと新ファイルが重複しています\r\n[ /o/ ]"},
      {"+a +b", "+a b", "/n/",
       "旧ファイルと新ファイルが一致していません\r（旧） [ b ]　　（新） [ No Select ]"},
      {"+a c", "+a +c", "/n/",
       "旧ファイルと新ファイルが一致していません\r（旧） [ No Select ]　　（新） [ c ]"},
      {"+a", "+a +c", "/n/",
       "旧ファイルと新ファイルが一致していません\r（旧） [ Nothing ]　　（新） [ c ]"},
      {"+a +x", "+a", "/n/",
       "旧ファイルと新ファイルが一致していません\r（旧） [ x ]　　（新） [ Nothing ]"},
  };
  for (const Case& c : cases) {
    TestRun run;
    run.sides[0] = {NativePath("/o/"), "", List(c.old_files)};
    run.sides[1] = {NativePath(c.new_folder), "", List(c.new_files)};
    EXPECT_EQ(CheckPairSelection(run.sides, run.platform), c.message == nullptr);
    EXPECT_EQ(run.platform.messages,
              c.message == nullptr ? Texts{} : Texts{std::string("Ledrix: ") + c.message});
  }
}

TEST(FileSides, SelectNamesakesAndReadFilters) {
  FileSides sides;
  sides[0].files = List("+A +b c +B");
  sides[1].files = List("a +x B b");
  SelectNamesakes(sides[0].files, sides[1].files);
  const auto selected = [](const FileList& list) {
    Texts names;
    for (const auto& entry : list.entries) {
      if (entry.selected) names.push_back(entry.name);
    }
    return names;
  };
  EXPECT_EQ(selected(sides[1].files), (Texts{"a", "B", "b"}));
  SelectAllNamesakes(sides);
  EXPECT_EQ(selected(sides[0].files), (Texts{"A", "b", "B"}));
  sides[0].files = List("a A b B");
  sides[1].files = List("A b");
  SelectAllNamesakes(sides);
  EXPECT_EQ(selected(sides[0].files), (Texts{"A", "b"}));

  OptionRecord options;
  options.FPatternTtl[1] = "  ";
  options.FPatternTtl[2] = " My (x) ";
  options.FPattern[2] = " *.m ";
  EXPECT_EQ(FilterEntries(options, 0),
            (Texts{"旧ﾌｧｲﾙ (*.OLD;*.BAK)", "CBLｿｰｽ (*.CBL;*.COB)", "My (x) (*.m)",
                   "ﾃﾞｨﾚｸﾄﾘ情報ﾌｧｲﾙ (*.ddf)", "全て (*.*)"}));
  EXPECT_EQ(FilterEntries(options, 1)[0], "新ﾌｧｲﾙ (*.NEW)");
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
    sides[0] = {request.OldPath, "", List("+a.CBL +b.CBL +c.exe")};
    sides[1] = {request.NewPath, "", List("+a.CBL +B.cbl +c.exe")};
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
  run.Set("ComboCSVName", "old/c.exe");
  run.Run();
  EXPECT_EQ(run.platform.messages.size(), 1u);
  EXPECT_EQ(run.front_end.results.size(), 0u);
  EXPECT_EQ(test::ReadFile(run.folder.At("old/c.exe")), "same");

  FolderRun listing;
  listing.Set("ComboLstLst", "old/b.CBL*");
  listing.sides[0].files.entries[0].name = "";  // its listing would be the second old file
  listing.sides[0].files.entries.erase(listing.sides[0].files.entries.begin());
  listing.request.FileCount = 2;
  listing.Run();
  EXPECT_EQ(test::ReadFile(listing.folder.At("old/b.CBL")), "old");
}

TEST(RunJob, ClearsTheResultListWhenTold) {
  FolderRun run;
  run.Set("OutListClear", "1");
  run.Run();
  run.Run();
  EXPECT_EQ(run.front_end.results.at(0).substr(0, 14), "( 1 Compare ) ");
  EXPECT_EQ(run.front_end.results.size(), 8u);
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
           ",2024/13/01 10:00:00\r\n";
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

TEST(RunLog, TheDebugLogIsWrittenOnlyWithItsSwitch) {
  FolderRun run;
  run.Run();
  EXPECT_FALSE(FileExists(run.program.At("ldxdebug.log")));
  run.job.DebugLog = true;
  run.request.OldPath = run.folder.At("old/c.exe");
  run.Run();
  EXPECT_EQ(ReadLines(run.program.At("ldxdebug.log")),
            (Texts{"2024/03/09 14:05:07 >> c >> 50707 <- 0.00 -> 50707 ///// 0"}));
}

TEST(JobMessage, TellsWhatWillBeDone) {
  struct Case {
    JobKind kind;
    int64_t count;
    const char* old_path;
    const char* new_path;
    const char* caption;
    const char* message;
  };
  const Case cases[] = {
      {JobKind::kComp, 1, "/o/a.c", "/n/b.c", "Ledrix  < Compare >",
       "a.c と b.c を判定し\ra_c_COMP.TXT に出力します"},
      {JobKind::kComp, 12, "/o/a.c", "/n/a.c", "Ledrix  < MultiSelect Compare >",
       "複数コンペア （ 12 ファイル ） を開始します"},
      {JobKind::kStepCnt, 0, "/o/a.c", "", "Ledrix  < StepCount >",
       "ステップカウントを開始実行します\r( /o/a.c )"},
      {JobKind::kStepCsv, 3, "/o/", "", "Ledrix  < StepCount CSV Mode >",
       "ステップカウント(CSV)を行い x.lst に出力します\r(/o/)\r3 File"},
      {JobKind::kDirEdit, 0, "/o/", "", "Ledrix  < Directory Compare Edit > ",
       "/o/ の情報を\r/out/x.lst に出力します"},
      {JobKind::kDirComp, 0, "/o/LIST.DDF", "/n/",
       "Ledrix  < Directory Compare 比較範囲=パスなし > ",
       "LIST.DDF ﾃﾞｨﾚｸﾄﾘ情報ﾌｧｲﾙと /n/ を比較し\rx.lst に出力します"},
      {JobKind::kDirComp, 0, "/o/", "/n/l.ddf", "Ledrix  < Directory Compare 比較範囲=パスなし > ",
       "/o/ とl.ddf ﾃﾞｨﾚｸﾄﾘ情報ﾌｧｲﾙを比較し\rx.lst に出力します"},
  };
  for (const Case& c : cases) {
    TestRun run;
    run.request.JobKind = c.kind;
    run.request.FileCount = c.count;
    run.request.OldPath = NativePath(c.old_path);
    run.request.NewPath = NativePath(c.new_path);
    if (c.kind != JobKind::kComp) run.request.OutPath = NativePath("/out/x.lst");
    run.request.CompareRange = CompareRange::kNoPath;
    EXPECT_EQ(JobCaption(run.request), c.caption);
    BeginJob(run.job, run.request);
    EXPECT_EQ(JobMessage(run.options, run.job), c.message);
  }
}

}  // namespace
}  // namespace ledrix
