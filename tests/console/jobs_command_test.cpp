// Folder compares, steps, snapshot, dircomp and judge from outside.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "support/program.h"
#include "support/test_files.h"

namespace ledrix {
namespace {

using test::FileExists;
using test::ProgramOptions;
using test::ProgramResult;
using test::ReadLines;
using test::RunProgram;
using test::SetModified;
using test::Sjis;
using test::TempFolder;
using Texts = std::vector<std::string>;

// Two folders to work on; commands run in the folder above them.
struct Trees {
  TempFolder folder;

  Trees() {
    for (const char* name : {"old", "new", "old/sub", "home", "config"}) {
      std::filesystem::create_directory(folder.At(name).bytes());
    }
    File("old/a.CBL", "1\r\n2\r\n", 0);
    File("new/a.CBL", "1\r\n3\r\n", 60);
    File("old/b.CBL", "same\r\n", 0);
    File("new/B.cbl", "same\r\n", 60);
  }
  void File(const std::string& name, const std::string& bytes, time_t later) const {
    folder.Write(name, bytes);
    SetModified(folder.At(name), test::kTestTime + later);
  }
  ProgramResult Run(Texts arguments, ProgramOptions options = {}) const {
    arguments.insert(arguments.begin(), LEDRIXC);
    options.folder = folder.path();
    options.environment = {"LEDRIX_HOME=" + folder.path() + "/home",
                           "XDG_CONFIG_HOME=" + folder.path() + "/config"};
    return RunProgram(arguments, options);
  }
  std::string At(const char* name) const { return folder.At(name).bytes(); }
};

TEST(FolderCompare, PairsTheFilesOfTwoFolders) {
  const Trees trees;
  trees.File("old/gone.txt", "x", 0);
  trees.File("new/come.txt", "x", 0);
  const ProgramResult result =
      trees.Run({"compare", "old", "new", "--out", "home/", "--csv", "--settings", "none"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out,
            "( 1 Compare ) " + trees.At("home/a_CBL_COMP.TXT") +
                "\n    UnMatch=    1 OLD=    2 NEW=    2 Rep=    1 Add=    0 Del=    0\n"
                "( 2 Compare ) " +
                trees.At("home/b_CBL_COMP.TXT") +
                "\n    変更なし   Old(New)=    1\n( 3 Compare ) " + trees.At("home/Ledrix.CSV") +
                "\n     Total File Count=    2\n");
  EXPECT_EQ(result.err, "ledrixc: " + trees.At("old/gone.txt") +
                            ": 旧フォルダだけに有ります\nledrixc: " + trees.At("new/come.txt") +
                            ": 新フォルダだけに有ります\n");
  EXPECT_EQ(ReadLines(trees.folder.At("home/Ledrix.CSV")).size(), 3u);
  EXPECT_FALSE(FileExists(trees.folder.At("home/Ledrixr.Log")));  // nothing but the outputs
}

TEST(FolderCompare, EndsAsItsPairsDo) {
  struct Case {
    const char* name;
    Texts arguments;
    int status;
    const char* err;
  };
  const Case cases[] = {
      {"no common name", {"compare", "old", "empty"}, 1, "旧フォルダだけに有ります"},
      {"two empty folders", {"compare", "empty", "empty"}, 0, ""},
      {"excluded pairs do not count", {"compare", "old", "new", "--set", "NoPattern=*.CBL"}, 0, ""},
      {"a file and a folder", {"compare", "old/a.CBL", "new"}, 1, ""},
      {"a folder and a file", {"compare", "old", "new/a.CBL"}, 1, ""},
      {"a file and a folder without it", {"compare", "old/b.CBL", "empty"}, 2, "NEW Open Error"},
      {"a file as output", {"compare", "old", "new", "--out", "x.lst"}, 2, "出力先はフォルダ"},
      {"a missing folder", {"compare", "old", "none"}, 2, "none: ファイルが見つかりません"},
  };
  for (const Case& c : cases) {
    const Trees trees;
    std::filesystem::create_directory(trees.At("empty"));
    const ProgramResult result = trees.Run(c.arguments);
    EXPECT_EQ(result.status, c.status) << c.name << result.err;
    if (*c.err == '\0') {
      EXPECT_EQ(result.err, "") << c.name;
    } else {
      EXPECT_NE(result.err.find(c.err), std::string::npos) << c.name << result.err;
    }
    EXPECT_FALSE(FileExists(trees.folder.At("x.lst")));
  }
}

TEST(FolderCompare, RecordsItsFoldersWithTheUsersSettings) {
  const Trees trees;
  EXPECT_EQ(trees.Run({"compare", "old", "new", "--quiet"}).status, 1);
  EXPECT_EQ(ReadLines(trees.folder.At("home/Ledrixr.Log")).size(), 2u);
}

TEST(Steps, CountAFileOrAFolder) {
  const Trees trees;
  ProgramResult result = trees.Run({"steps", "old/a.CBL", "--settings", "none"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out,
            "( 1 StepCnt ) " + trees.At("old/a_CBL_STP.TXT") + "\n    LINE COUNT :  2\n");
  EXPECT_EQ(ReadLines(trees.folder.At("old/a_CBL_STP.TXT")).back(), "STEP COUNT [ 2 ]");

  for (int round = 0; round < 2; ++round) {  // the second run does not count the first one's output
    result = trees.Run({"steps", "old", "--settings", "none"});
    EXPECT_EQ(result.status, 0);
    const Texts rows = ReadLines(trees.folder.At("old/STEP.CSV"));
    EXPECT_EQ((Texts{rows.begin() + 1, rows.end()}),
              (Texts{"No.,File Name,STEP COUNT", "1,a.CBL,2", "2,a_CBL_STP.TXT,4", "3,b.CBL,1"}));
  }
  EXPECT_EQ(trees.Run({"steps", "none"}).status, 2);
  EXPECT_EQ(trees.Run({"steps", "old/sub"}).status, 2);
  EXPECT_EQ(trees.Run({"steps", "old/a.CBL", "--out", "old/a.CBL"}).status, 2);
  EXPECT_EQ(trees.Run({"steps", "old", "--out", "old/a.CBL"}).status, 2);
  EXPECT_EQ(test::ReadFile(trees.folder.At("old/a.CBL")), "1\r\n2\r\n");
}

TEST(Snapshot, AndDirCompWorkOnTreesAndFiles) {
  const Trees trees;
  ProgramResult result = trees.Run({"snapshot", "old", "--out", "s.ddf", "--settings", "none"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "( 1 DirEdit ) " + trees.At("s.ddf") + "\n    FileCount:2\n");
  trees.File("old/sub/late.c", "x", 0);
  struct Case {
    Texts arguments;
    int status;
    const char* result;
  };
  const Case cases[] = {
      {{"s.ddf", "old"}, 1, "UnMatch=    1 OLD=    2 NEW=    3 Rep=    0 Add=    1 Del=    0"},
      {{"s.ddf", "old", "--types", "*.CBL"}, 0, "UnMatch=    0 OLD=    2 NEW=    2"},
      {{"s.ddf", "s.ddf", "--range", "full"}, 0, "UnMatch=    0 OLD=    2 NEW=    2"},
      {{"old/", "new", "--range", "full"}, 1, "UnMatch=    5 OLD=    3 NEW=    2"},
      {{"old", "new", "--range", "none"}, 1, "UnMatch=    3 OLD=    3 NEW=    2 Rep=    2"},
  };
  for (const Case& c : cases) {
    Texts arguments = {"dircomp", "--out", "d.lst", "--settings", "none"};
    arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
    result = trees.Run(arguments);
    EXPECT_EQ(result.status, c.status) << result.err;
    EXPECT_NE(result.out.find(c.result), std::string::npos) << result.out;
  }
}

TEST(Snapshot, AndDirCompRefuseBadArguments) {
  struct Case {
    Texts arguments;
    const char* message;
  };
  const Case cases[] = {
      {{"snapshot", "old"}, "引数が足りません"},
      {{"snapshot", "old", "--out", "s.txt"}, "拡張子が違います / 拡張子は *.ddf のみ有功です"},
      {{"snapshot", "none", "--out", "s.ddf"}, "none"},
      {{"snapshot", "old/a.CBL", "--out", "s.ddf"}, "フォルダではありません"},
      {{"snapshot", "old", "--out", "no/s.ddf"}, "no/s.ddf"},
      {{"dircomp", "old", "new"}, "引数が足りません"},
      {{"dircomp", "old/a.CBL", "new", "--out", "d.lst"}, "a.CBL"},
      {{"dircomp", "old", "none", "--out", "d.lst"}, "none"},
      {{"dircomp", "none.ddf", "new", "--out", "d.lst"}, "Old File Open Error"},
      {{"dircomp", "old", "new", "--out", "d.lst", "--range", "half"}, "引数に誤りが有ります"},
      {{"dircomp", "bad.ddf", "new", "--out", "d.lst"}, "bad.ddf:2: "},
  };
  for (const Case& c : cases) {
    const Trees trees;
    trees.folder.Write("bad.ddf", "\\x\r\nnonsense\r\n");
    const ProgramResult result = trees.Run(c.arguments);
    EXPECT_EQ(result.status, 2) << c.message << result.out;
    EXPECT_NE(result.err.find(c.message), std::string::npos) << c.message << "\n" << result.err;
  }
}

TEST(Judge, PrintsTheCodeOfEachFile) {
  const Trees trees;
  trees.folder.Write("utf8",
                     "\xE3\x81\x82"
                     "4\n");
  trees.folder.Write("empty", "");
  trees.folder.Write("sjis", Sjis("漢字4\n"));
  ProgramResult result = trees.Run({"judge", "utf8", "empty", "sjis"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "UTF8\tutf8\nSJIS\tempty\nSJIS\tsjis\n");
  result = trees.Run({"judge", "none", "utf8", "old"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.out, "UTF8\tutf8\n");
  EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 2);
  result = RunProgram({"/bin/sh", "-c", "printf '\\033$B' | '" LEDRIXC "' judge -"});
  EXPECT_EQ(result.out, "JIS\t-\n");
}

// One signal stops a job that converts, a second one ends the program at once; in both cases the
// copy goes.
TEST(Signals, LeaveNoCopyBehind) {
  for (const int signals : {1, 2}) {
    const Trees trees;
    const std::string pipe = trees.At("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const std::string temp = trees.At("temp");
    std::filesystem::create_directory(temp);
    const auto copies = [&] {
      return std::distance(std::filesystem::directory_iterator(temp), {});
    };
    const ProgramResult result =
        RunProgram({"/usr/bin/env", "TMPDIR=" + temp, LEDRIXC, "compare", "--settings", "none",
                    "--charset", "UTF-8", pipe, trees.At("new/a.CBL")},
                   {.meanwhile = [&](pid_t child) {
                     const int descriptor = open(pipe.c_str(), O_WRONLY);
                     const std::string lines(100000, '\n');
                     ASSERT_GT(write(descriptor, lines.data(), lines.size()), 0);
                     for (int wait = 0; copies() == 0 && wait < 2000; ++wait) usleep(1000);
                     EXPECT_EQ(copies(), 1);
                     // A stopped process takes both signals before it goes on.
                     kill(child, SIGSTOP);
                     kill(child, SIGTERM);
                     if (signals == 2) kill(child, SIGINT);
                     kill(child, SIGCONT);
                     usleep(20000);
                     close(descriptor);
                   }});
    EXPECT_EQ(copies(), 0) << signals;
    EXPECT_NE(result.status, 0);
    EXPECT_NE(result.status, 1);
  }
}

}  // namespace
}  // namespace ledrix
