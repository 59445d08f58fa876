// "ledrixc compare" from outside.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "console/program_run.h"
#include "text/ascii.h"

namespace ledrix {
namespace {

using test::FileExists;
using test::ProgramOptions;
using test::ProgramResult;
using test::ProgramRun;
using test::ReadLines;
using test::Texts;

TEST(CompareCommand, WritesItsOutputsWhereItIsTold) {
  for (const auto& row : test::ReadTable("console_outputs.tsv")) {
    ProgramRun run;
    run.Made();
    const ProgramResult result = run.Compare(SplitAt("old.txt new.txt" + row[0], ' '));
    EXPECT_EQ(result.status, 1) << row[0];
    EXPECT_EQ(result.err, "") << row[0];
    EXPECT_EQ(run.Made(), SplitAt(row[1], ' ')) << row[0];
    EXPECT_TRUE(run.InputsAreUntouched()) << row[0];
  }
}

TEST(CompareCommand, TakesOddNamesAndMarks) {
  const ProgramRun run;
  for (const std::string name :
       {"-x.txt", "名前 表.txt", "caf\xE9.txt", "line\nbreak.txt", "{a};b.txt"}) {
    run.File(name, "=x\n");
    const ProgramResult result =
        run.Compare({"--out", "r.lst", "--mrg", "--marks", "--", name, "new.txt"});
    EXPECT_EQ(result.status, 1) << name << result.err;
    ReadLines(run.folder.At("r.lst"));  // no line is broken
    const std::string merge = name.substr(0, name.rfind('.')) + "_MRG.txt";
    EXPECT_EQ(ReadLines(run.folder.At(merge)), (Texts{"/n:a", ">n:c", ">n:d"})) << name;
  }
}

// One clear message, exit status 2, no output left that looks complete, inputs untouched.
void ExpectRefusal(ProgramRun& run, const Texts& arguments, const std::string& message,
                   const ProgramOptions& options = {}) {
  run.Made();
  const ProgramResult result = run.Console(arguments, options);
  EXPECT_EQ(result.status, 2) << message << result.out;
  EXPECT_NE(result.err.find(message), std::string::npos) << message << "\n" << result.err;
  EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
  EXPECT_EQ(result.out.find("変更なし"), std::string::npos) << message;
  Texts made = run.Made();
  std::erase_if(made, [](const std::string& name) { return name.starts_with("home/"); });  // logs
  EXPECT_EQ(made, Texts()) << message;
  EXPECT_TRUE(run.InputsAreUntouched()) << message;
}

TEST(Console, RefusesBadArguments) {
  for (const auto& row : test::ReadTable("console_refusals.tsv")) {
    ProgramRun run;
    run.File("bad.ddf", "\\x\r\nnonsense\r\n");
    ExpectRefusal(run, SplitAt(row[0], ' '), row[1]);
  }
  for (const Texts& arguments : {Texts{}, Texts{"nonsense"}}) {
    EXPECT_EQ(ProgramRun().Console(arguments).status, 2);
  }
  for (const Texts& arguments : {Texts{"--help"}, Texts{"compare", "--help"}, Texts{"--version"}}) {
    EXPECT_EQ(ProgramRun().Console(arguments).status, 0);
  }
}

TEST(CompareCommand, TellsOfFilesThatItCannotUse) {
  struct Case {
    Texts arguments;
    const char* message;  // the file's name
    ProgramOptions options = {};
  };
  std::vector<Case> cases = {
      {{"none", "new.txt"}, "none"},
      {{"old.txt", "old"}, "old.txt"},  // not in that folder
      {{"/dev/tty", "new.txt"}, "/dev/tty"},
      {{"socket", "new.txt"}, "socket"},
      {{"old.txt/x", "new.txt"}, "old.txt/x"},
      {{"old.txt", "new.txt", "--out", "./new.txt"}, "new.txt"},
      {{"old.txt", "new.txt", "--sbn", "--out", "old_txt_SBN.TXT"}, "old_txt_SBN.TXT"},
      {{"old.txt", "new.txt", "--out", "no/"}, "no/old_txt_COMP.TXT"},
      {{"old.txt", "new.txt", "--out", "/dev/full"}, "/dev/full"},
  };
  if (test::MayDropRoot()) {
    cases.push_back({{"secret", "new.txt"}, "secret", {.as_nobody = true}});
    cases.push_back({{"old.txt", "secret"}, "secret", {.as_nobody = true}});
    cases.push_back({{"old.txt", "new.txt", "--out", "locked/"}, "locked/", {.as_nobody = true}});
    cases.push_back({{"old.txt", "new.txt", "--out", "secret"}, "secret", {.as_nobody = true}});
  }
  for (const Case& c : cases) {
    ProgramRun run;
    std::filesystem::create_directory(run.At("locked"));
    chmod(run.At("locked").c_str(), 0555);
    chmod(run.folder.Write("secret", "s").c_str(), 0);
    const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{AF_UNIX, {}};
    run.At("socket").copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    Texts arguments = c.arguments;
    arguments.insert(arguments.begin(), "compare");
    ExpectRefusal(run, arguments, c.message, c.options);
    close(listener);
    EXPECT_EQ(run.Read("secret"), "s");
  }
  EXPECT_TRUE(FileExists(NativePath("/dev/full")));
}

TEST(CompareCommand, AFullDiskLeavesNothingBehind) {
  if (!test::MayMount()) GTEST_SKIP() << "no right to mount a file system of one megabyte";
  const ProgramRun run;
  std::string lines;
  for (int i = 0; i < 20000; ++i) lines += "line " + std::to_string(i) + "\n";
  run.File("big.txt", lines);
  std::filesystem::create_directory(run.At("disk"));
  // The listing fills the disk; what is left there is counted on that disk.
  const ProgramResult result = run.Run(
      "/bin/sh",
      {"-c", "'" LEDRIXC "' compare --settings none --mrg --csv old.txt big.txt --out disk/; "
             "echo $?; ls disk"},
      {.tmpfs = run.At("disk")});
  EXPECT_NE(result.err.find("ディスクの空き容量が足りません"), std::string::npos) << result.err;
  EXPECT_NE(result.out.find("    エラー\n"), std::string::npos) << result.out;
  EXPECT_NE(result.out.find("\n2\nLedrix.CSV\n"), std::string::npos) << result.out;
  EXPECT_EQ(result.out.find("_COMP"), result.out.rfind("_COMP")) << result.out;
  EXPECT_EQ(result.out.find("_MRG"), std::string::npos) << result.out;
}

TEST(CompareCommand, ALineOf200MegabytesIsALine) {
  const ProgramRun run;
  for (const char* name : {"old.txt", "new.txt"}) {
    run.File(name, "");
    ASSERT_EQ(truncate(run.At(name).c_str(), 200'000'000), 0);
  }
  const int file = open(run.At("new.txt").c_str(), O_WRONLY);
  ASSERT_EQ(pwrite(file, "x", 1, 5000), 1);
  close(file);
  const ProgramResult result = run.Compare({"--set", "OptNoCngNoOut=0", "old.txt", "new.txt"});
  EXPECT_EQ(result.status, 1) << result.err;
  EXPECT_NE(result.out.find("OLD=    1 NEW=    1 Rep=    1"), std::string::npos) << result.out;
}

// A pipe that the test fills bit by bit holds the program where the test wants it.
struct HeldRun : ProgramRun {
  static constexpr int kLines = 100'000;
  static std::string Line(int i) { return "line " + std::to_string(i) + "\n"; }

  HeldRun() {
    std::string lines;
    for (int i = 0; i < kLines; ++i) lines += Line(i);
    File("old.txt", lines);
    EXPECT_EQ(mkfifo(At("pipe").c_str(), 0666), 0);
  }
  // Sends half of the lines, calls, and sends the rest.
  ProgramResult Run(const std::function<void(pid_t)>& in_the_middle) const {
    return Compare({"old.txt", "pipe", "--csv"}, {.meanwhile = [&](pid_t child) {
                     const int descriptor = open(At("pipe").c_str(), O_WRONLY);
                     for (int i = 0; i < kLines; ++i) {
                       if (i == kLines / 2) in_the_middle(child);
                       const std::string line = Line(i);
                       // The program may be gone by design of the test.
                       if (write(descriptor, line.data(), line.size()) < 0) break;
                     }
                     close(descriptor);
                   }});
  }
};

TEST(HeldCompare, ASignalStopsTheJob) {
  const HeldRun run;
  signal(SIGPIPE, SIG_IGN);
  const ProgramResult result = run.Run([](pid_t child) { kill(child, SIGINT); });
  signal(SIGPIPE, SIG_DFL);
  EXPECT_EQ(result.status, 2);
  EXPECT_NE(result.out.find("    中断\n"), std::string::npos) << result.out;
  EXPECT_EQ(ReadLines(run.folder.At("Ledrix.CSV")).at(1),
            "1," + run.At("old.txt") + ",-," + run.At("pipe") + ",中断");
}

}  // namespace
}  // namespace ledrix
