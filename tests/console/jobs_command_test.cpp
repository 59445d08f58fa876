// Folder compares, steps, snapshot, dircomp and judge from outside.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include "console/program_run.h"
#include "text/ascii.h"

namespace ledrix {
namespace {

using test::FileExists;
using test::ProgramResult;
using test::ProgramRun;
using test::ReadLines;
using test::Sjis;
using test::Texts;

TEST(FolderCompare, PairsTheFilesOfTwoFolders) {
  const ProgramRun trees;
  trees.File("old/gone.txt", "x");
  trees.File("new/come.txt", "x");
  ASSERT_EQ(mkfifo(trees.At("old/pipe").c_str(), 0600), 0);  // no file
  const ProgramResult result =
      trees.Console({"compare", "old", "new", "--out", "home/", "--csv", "--settings", "none"});
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.out.find("( 3 Compare ) " + trees.At("home/Ledrix.CSV") +
                            "\n     Total File Count=    2\n"),
            std::string::npos);
  EXPECT_EQ(result.err, "ledrixc: " + trees.At("old/gone.txt") +
                            ": 旧フォルダだけに有ります\nledrixc: " + trees.At("new/come.txt") +
                            ": 新フォルダだけに有ります\n"
                            "ledrixc: サブフォルダは比較していません（旧 1、新 0）\n");
  EXPECT_FALSE(FileExists(trees.folder.At("home/Ledrixr.Log")));  // nothing but the outputs
  EXPECT_EQ(trees.Console({"compare", "old", "new", "--quiet"}).status, 1);
  EXPECT_EQ(ReadLines(trees.folder.At("home/Ledrixr.Log")).size(), 2u);
}

TEST(FolderCompare, EndsAsItsPairsDo) {
  for (const auto& row : test::ReadTable("console_compares.tsv")) {
    const ProgramRun trees;
    std::filesystem::create_directory(trees.At("empty"));
    const ProgramResult result = trees.Console(SplitAt(row[0], ' '));
    EXPECT_EQ(std::to_string(result.status), row[1]) << row[0] << result.err;
    EXPECT_NE(result.err.find(row[2]), std::string::npos) << row[0] << result.err;
  }
}

// A trailing "$" in the third column asks for nothing behind the text before it.
TEST(Trials, EndAsTheirRowsSay) {
  for (const auto& row : test::ReadTable("trials.tsv")) {
    const ProgramRun run;
    const ProgramResult result =
        run.Run("/bin/sh", {"-c", row[0]}, {.environment = {"L=" LEDRIXC}});
    EXPECT_EQ(std::to_string(result.status), row[1]) << row[0] << "\n" << result.out << result.err;
    std::string text = row[2];
    const bool ends = text.ends_with('$');
    if (ends) text.pop_back();
    EXPECT_TRUE(ends ? result.out.ends_with(text) : result.out.find(text) != std::string::npos)
        << row[0] << "\n"
        << result.out << result.err;
  }
}

// One signal stops a job that waits for a pipe, a second one ends the program; nothing stays.
TEST(Signals, StopAJobThatConverts) {
  for (const int signals : {1, 2}) {
    ProgramRun run;
    ASSERT_EQ(mkfifo(run.At("pipe").c_str(), 0600), 0);
    run.Made();
    const ProgramResult result =
        run.Compare({"--charset", "UTF-8", "pipe", "new/a.CBL"}, {.meanwhile = [&](pid_t child) {
                      const int pipe = open(run.At("pipe").c_str(), O_WRONLY);
                      const std::string lines(100000, '\n');
                      ASSERT_GT(write(pipe, lines.data(), lines.size()), 0);
                      // A stopped process takes both signals before it goes on.
                      kill(child, SIGSTOP);
                      kill(child, SIGTERM);
                      if (signals == 2) kill(child, SIGINT);
                      kill(child, SIGCONT);
                      usleep(20000);
                      close(pipe);
                    }});
    EXPECT_EQ(run.Made(), Texts()) << signals;
    EXPECT_GE(result.status, 2);
  }
}

TEST(Steps, CountAFileOrAFolder) {
  const ProgramRun trees;
  EXPECT_EQ(trees.Console({"steps", "old/a.CBL"}).out,
            "( 1 StepCnt ) " + trees.At("old/a_CBL_STP.TXT") + "\n    LINE COUNT :  2\n");
  for (int round = 0; round < 2; ++round) {  // the second run does not count the first one's output
    EXPECT_EQ(trees.Console({"steps", "old"}).status, 0);
    const Texts rows = ReadLines(trees.folder.At("old/STEP.CSV"));
    EXPECT_EQ((Texts{rows.begin() + 1, rows.end()}),
              (Texts{"No.,File Name,STEP COUNT", "1,a.CBL,2", "2,a_CBL_STP.TXT,4", "3,b.CBL,1"}));
  }
  // What cannot be looked at is a row too, and the reason is told.
  ASSERT_EQ(symlink(std::string(300, 'x').c_str(), trees.At("old/a_long").c_str()), 0);
  const ProgramResult result = trees.Console({"steps", "old"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.err, "ledrixc: " + trees.At("old/a_long") + ": ファイル名が長すぎます\n");
  EXPECT_EQ(ReadLines(trees.folder.At("old/STEP.CSV")).at(4), "3,a_long,-");
  EXPECT_EQ(trees.Console({"steps", "none"}).status, 2);
}

TEST(Snapshot, AndDirCompWorkOnTreesAndFiles) {
  const ProgramRun trees;
  ProgramResult result = trees.Console({"snapshot", "old", "--out", "s.ddf", "--settings", "none"});
  EXPECT_EQ(result.status, 0);
  trees.File("old/sub/late.c", "x");
  trees.File("bad.ddf", "\\x\r\nnonsense\r\n");
  struct Case {
    Texts arguments;
    int status;
    const char* result;
  };
  const Case cases[] = {
      {{"s.ddf", "old"}, 1, "UnMatch=    1 OLD=    2 NEW=    3 Rep=    0 Add=    1 Del=    0"},
      {{"s.ddf", "old", "--types", "*.CBL"}, 0, "UnMatch=    0 OLD=    2 NEW=    2"},
      {{"bad.ddf", "new"}, 2, "エラー"},
      {{"none.ddf", "new"}, 2, "エラー"},
      {{"s.ddf", "s.ddf", "--range", "full"}, 0, "UnMatch=    0 OLD=    2 NEW=    2"},
      {{"old/", "new", "--range", "full"}, 1, "UnMatch=    5 OLD=    3 NEW=    2"},
      {{"old/sub", "old", "--range", "none"}, 1, "UnMatch=    2 OLD=    1 NEW=    3 Rep=    0"},
  };
  for (const Case& c : cases) {
    Texts arguments = {"dircomp", "--out", "d.lst", "--settings", "none"};
    arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
    result = trees.Console(arguments);
    EXPECT_EQ(result.status, c.status) << result.err;
    EXPECT_NE(result.out.find(c.result), std::string::npos) << result.out;
  }
}

TEST(Judge, PrintsTheCodeOfEachFile) {
  const ProgramRun trees;
  trees.folder.Write("utf8",
                     "\xE3\x81\x82"
                     "4\n");
  trees.folder.Write("empty", "");
  trees.folder.Write("sjis", Sjis("漢字4\n"));
  ProgramResult result = trees.Console({"judge", "utf8", "empty", "sjis"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "UTF8\tutf8\nSJIS\tempty\nSJIS\tsjis\n");
  result = trees.Console({"judge", "none", "utf8", "old"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.out, "UTF8\tutf8\n");
  EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 2);
  result = trees.Run("/bin/sh", {"-c", "printf '\\033$B' | '" LEDRIXC "' judge -"});
  EXPECT_EQ(result.out, "JIS\t-\n");
}

}  // namespace
}  // namespace ledrix
