// Folder compares, signals and the table of trials, from outside.
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

}  // namespace
}  // namespace ledrix
