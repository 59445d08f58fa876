// "ledrixc compare" from outside.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
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
using test::TempFolder;
using Texts = std::vector<std::string>;

ProgramResult Compare(Texts arguments, const ProgramOptions& options = {}) {
  Texts command = {LEDRIXC, "compare", "--settings", "none"};
  command.insert(command.end(), arguments.begin(), arguments.end());
  return RunProgram(command, options);
}

// Two files that differ, in a folder that anybody may enter.
struct Pair {
  TempFolder folder;
  std::string old_path = folder.Write("old.txt", "a\nb\n").bytes();
  std::string new_path = folder.Write("new.txt", "a\nc\nd\n").bytes();

  Pair() {
    SetModified(NativePath(old_path), test::kTestTime);
    SetModified(NativePath(new_path), test::kTestTime + 60);
    chmod(folder.path().c_str(), 0777);
  }
  Texts Names() const {
    Texts names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
      names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
  }
  bool InputsAreUntouched() const {
    return test::ReadFile(NativePath(old_path)) == "a\nb\n" &&
           test::ReadFile(NativePath(new_path)) == "a\nc\nd\n";
  }
};

TEST(CompareCommand, WritesItsOutputsWhereItIsTold) {
  struct Case {
    const char* name;
    Texts options;
    Texts made;  // beside old.txt and new.txt, below the pair's folder
  };
  const Case cases[] = {
      {"beside the old file", {}, {"old_txt_COMP.TXT"}},
      {"all outputs",
       {"--sbn", "--csv", "--mrg"},
       {"Ledrix.CSV", "old_MRG.txt", "old_txt_COMP.TXT", "old_txt_SBN.TXT"}},
      {"a file", {"--out", "r.lst", "--sbn"}, {"r.lst", "old_txt_SBN.TXT"}},
      {"a folder that exists",
       {"--out", "sub", "--mrg"},
       {"sub/old_MRG.txt", "sub/old_txt_COMP.TXT"}},
      {"a folder by its slash", {"--out=sub/"}, {"sub/old_txt_COMP.TXT"}},
      {"fixed folder",
       {"--set", "ContOutDir=1", "--set", "ContOutDirPath=/tmp/ledrix-fixed"},
       {"/tmp/ledrix-fixed/old_txt_COMP.TXT"}},
      {"another name", {"--set", "ComboLstLst=*.LST"}, {"old_txt.LST"}},
  };
  std::filesystem::create_directory("/tmp/ledrix-fixed");
  for (const Case& c : cases) {
    const Pair pair;
    std::filesystem::create_directory(pair.folder.path() + "/sub");
    Texts arguments = {"old.txt", "new.txt"};
    arguments.insert(arguments.end(), c.options.begin(), c.options.end());
    const ProgramResult result = Compare(arguments, {.folder = pair.folder.path()});
    EXPECT_EQ(result.status, 1) << c.name << result.err;
    EXPECT_EQ(result.err, "") << c.name;
    size_t files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(pair.folder.path())) {
      files += entry.is_regular_file();
    }
    for (const std::string& made : c.made) {
      const bool absolute = made[0] == '/';
      EXPECT_TRUE(FileExists(absolute ? NativePath(made) : pair.folder.At(made)))
          << c.name << ": " << made;
      if (!absolute) --files;
    }
    EXPECT_EQ(files, 2u) << c.name;
    EXPECT_TRUE(pair.InputsAreUntouched());
  }
  std::filesystem::remove_all("/tmp/ledrix-fixed");
}

TEST(CompareCommand, PrintsTheResultListAndExitsAsDiffDoes) {
  const Pair pair;
  const std::string listing = pair.folder.path() + "/old_txt_COMP.TXT";
  const Texts files = {pair.old_path, pair.new_path};
  ProgramResult result = Compare(files);
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, "( 1 Compare ) " + listing +
                            "\n    UnMatch=    2 OLD=    2 NEW=    3 Rep=    1 Add=    1 Del=    "
                            "0\n");
  result = Compare({"--quiet", pair.old_path, pair.new_path});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, "");

  SetModified(NativePath(pair.new_path), test::kTestTime);
  pair.folder.Write("new.txt", "a\nb\n");
  SetModified(NativePath(pair.new_path), test::kTestTime);
  result = Compare(files);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "( 1 Compare ) " + listing + "\n    ﾌｧｲﾙ日時ｻｲｽﾞ変更なし(SKIP)\n");
  EXPECT_FALSE(FileExists(NativePath(listing)));

  result = Compare({"--set", "OptNoCngNoOut=0", "--progress", pair.old_path, pair.new_path});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(ReadLines(NativePath(listing)).size(), 6u + 1 + 4);
}

TEST(CompareCommand, TakesOddNamesAndMarks) {
  const Pair pair;
  const Texts names = {"-x.txt", "名前 表.txt", "caf\xE9.txt", "line\nbreak.txt", "{a};b.txt"};
  for (const std::string& name : names) {
    pair.folder.Write(name, "=x\n");
    const ProgramResult result =
        Compare({"--out", "r.lst", "--mrg", "--marks", "--", name, "new.txt"},
                {.folder = pair.folder.path()});
    EXPECT_EQ(result.status, 1) << name << result.err;
    ReadLines(pair.folder.At("r.lst"));  // no line is broken
    const std::string merge = name.substr(0, name.rfind('.')) + "_MRG.txt";
    EXPECT_EQ(ReadLines(pair.folder.At(merge)), (Texts{"/n:a", ">n:c", ">n:d"})) << name;
  }
}

TEST(CompareCommand, RefusesBadArguments) {
  struct Case {
    Texts arguments;
    const char* message;
  };
  const Case cases[] = {
      {{"old.txt"}, "引数が足りません"},
      {{"old.txt", "new.txt", "third"}, "不明な引数です: third"},
      {{"old.txt", "new.txt", "--unknown"}, "不明な引数です: --unknown"},
      {{"old.txt", "new.txt", "--out"}, "引数に誤りが有ります"},
      {{"old.txt", "new.txt", "--set", "NoKey=1"}, "ｵﾌﾟｼｮﾝ NoKey は有りません"},
      {{"old.txt", "new.txt", "--set", "OptMatch"}, "KEY=VALUE"},
      {{"old.txt", "new.txt", "--set", "OptMatch=0"},
       "ﾃｷｽﾄｺﾝﾍﾟｱ：一致条件に誤りが有ります（1～99行）"},
      {{"old.txt", "new.txt", "--set", "OptSTCol=10", "--set", "OptEDCol=5"},
       "ﾃｷｽﾄｺﾝﾍﾟｱ：比較範囲（開始／終了）に誤りが有ります"},
      {{"old.txt", "new.txt", "--set", "FPatternTtl2=x"}, "（ﾊﾟﾀｰﾝ未設定)  3 番目"},
      {{"old.txt", "new.txt", "--set", "ContOutDir=1"},
       "出力結果ﾌｧｲﾙを出力するﾃﾞｨﾚｸﾄﾘが見つかりません"},
  };
  for (const Case& c : cases) {
    const Pair pair;
    const ProgramResult result = Compare(c.arguments, {.folder = pair.folder.path()});
    EXPECT_EQ(result.status, 2) << c.message;
    EXPECT_NE(result.err.find(c.message), std::string::npos) << c.message << "\n" << result.err;
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(pair.Names(), (Texts{"new.txt", "old.txt"})) << c.message;
  }
  EXPECT_EQ(RunProgram({LEDRIXC}).status, 2);
  EXPECT_EQ(RunProgram({LEDRIXC, "nonsense"}).status, 2);
  EXPECT_EQ(RunProgram({LEDRIXC, "--help"}).status, 0);
  EXPECT_EQ(RunProgram({LEDRIXC, "compare", "--help"}).status, 0);
  EXPECT_EQ(RunProgram({LEDRIXC, "--version"}).status, 0);
}

// One clear message with the file's name, exit status 2, no output left that looks complete,
// inputs untouched.
TEST(CompareCommand, TellsOfFilesThatItCannotUse) {
  struct Case {
    const char* name;
    Texts arguments;
    const char* message;
    Texts left_empty;
    ProgramOptions options = {};
  };
  const auto as_nobody = [] { return ProgramOptions{.as_nobody = true}; };
  std::vector<Case> cases = {
      {"missing old", {"none", "new.txt"}, "none", {}},
      {"missing new", {"old.txt", "none"}, "none", {}},
      {"folder", {"old.txt", "sub"}, "sub", {}},
      {"device", {"old.txt", "/dev/zero"}, "/dev/zero", {}},
      {"terminal device", {"/dev/tty", "new.txt"}, "/dev/tty", {}},
      {"socket", {"socket", "new.txt"}, "socket", {}},
      {"name behind a file", {"old.txt/x", "new.txt"}, "old.txt/x", {}},
      {"output is the old file", {"old.txt", "new.txt", "--out", "old.txt"}, "old.txt", {}},
      {"output is the new file", {"old.txt", "new.txt", "--out", "./new.txt"}, "new.txt", {}},
      {"output is a link to an input", {"old.txt", "new.txt", "--out", "link"}, "link", {}},
      {"outputs of one name",
       {"old.txt", "new.txt", "--sbn", "--out", "old_txt_SBN.TXT"},
       "old_txt_SBN.TXT",
       {}},
      {"summary is an input",
       {"old.txt", "new.txt", "--csv", "--set", "ComboCSVName=new.txt"},
       "new.txt",
       {}},
      {"output in no folder", {"old.txt", "new.txt", "--out", "no/r.lst"}, "no/r.lst", {}},
      {"output into no folder", {"old.txt", "new.txt", "--out", "no/"}, "no/", {}},
      {"device without space", {"old.txt", "new.txt", "--out", "/dev/full"}, "/dev/full", {}},
  };
  if (test::MayDropRoot()) {
    cases.push_back({"unreadable old", {"secret", "new.txt"}, "secret", {}, as_nobody()});
    cases.push_back({"unreadable new", {"old.txt", "secret"}, "secret", {}, as_nobody()});
    cases.push_back({"unwritable folder",
                     {"old.txt", "new.txt", "--out", "locked/"},
                     "locked/",
                     {},
                     as_nobody()});
    cases.push_back({"unwritable output",
                     {"old.txt", "new.txt", "--out", "secret"},
                     "secret",
                     {},
                     as_nobody()});
  }
  for (const Case& c : cases) {
    const Pair pair;
    std::filesystem::create_directory(pair.folder.path() + "/sub");
    std::filesystem::create_directory(pair.folder.path() + "/locked");
    chmod((pair.folder.path() + "/locked").c_str(), 0555);
    chmod(pair.folder.Write("secret", "s").c_str(), 0);
    ASSERT_EQ(symlink("new.txt", pair.folder.At("link").c_str()), 0);
    const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{AF_UNIX, {}};
    pair.folder.At("socket").bytes().copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    const Texts before = pair.Names();

    ProgramOptions options = c.options;
    options.folder = pair.folder.path();
    const ProgramResult result = Compare(c.arguments, options);
    close(listener);
    EXPECT_EQ(result.status, 2) << c.name << result.out;
    EXPECT_NE(result.err.find(c.message), std::string::npos) << c.name << "\n" << result.err;
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    EXPECT_EQ(result.out.find("変更なし"), std::string::npos) << c.name;
    EXPECT_TRUE(pair.InputsAreUntouched()) << c.name;
    EXPECT_EQ(test::ReadFile(pair.folder.At("secret")), "s") << c.name;
    EXPECT_EQ(pair.Names(), before) << c.name;
  }
  EXPECT_TRUE(FileExists(NativePath("/dev/full")));
}

TEST(CompareCommand, AFullDiskLeavesNothingBehind) {
  if (!test::MayMount()) GTEST_SKIP() << "no right to mount a file system of one megabyte";
  const Pair pair;
  std::string lines;
  for (int i = 0; i < 20000; ++i) lines += "line " + std::to_string(i) + "\n";
  pair.folder.Write("big.txt", lines);
  std::filesystem::create_directory(pair.folder.path() + "/disk");
  // The listing fills the disk; what is left there is counted on that disk.
  const ProgramResult result = RunProgram(
      {"/bin/sh", "-c",
       "'" LEDRIXC "' compare --settings none --mrg --csv old.txt big.txt --out disk/; echo $?; "
       "ls disk"},
      {.folder = pair.folder.path(), .tmpfs = pair.folder.path() + "/disk"});
  EXPECT_NE(result.err.find("ディスクの空き容量が足りません"), std::string::npos) << result.err;
  EXPECT_NE(result.out.find("    エラー\n"), std::string::npos) << result.out;
  EXPECT_NE(result.out.find("\n2\nLedrix.CSV\n"), std::string::npos) << result.out;
  EXPECT_EQ(result.out.find("_COMP"), result.out.rfind("_COMP")) << result.out;
  EXPECT_EQ(result.out.find("_MRG"), std::string::npos) << result.out;
}

TEST(CompareCommand, AStandardOutputThatIsFullIsTrouble) {
  const Pair pair;
  const ProgramResult result =
      RunProgram({"/bin/sh", "-c",
                  "'" LEDRIXC "' compare --settings none '" + pair.old_path + "' '" +
                      pair.new_path + "' >/dev/full"});
  EXPECT_EQ(result.status, 2);
  EXPECT_NE(result.err.find("標準出力に書き込めません"), std::string::npos);
}

TEST(CompareCommand, AnyBytesAreValidInput) {
  const Pair pair;
  struct Case {
    const char* name;
    std::string old_bytes;
    std::string new_bytes;
    const char* counts;
  };
  std::string binary;
  for (int i = 0; i < 70000; ++i) binary += static_cast<char>(i * 7919 % 251);
  const Case cases[] = {
      {"NUL bytes", std::string("a\0b\nc\0\n", 7), std::string("a\0b\nc\0\n", 7) + "d",
       "Rep=    0 Add=    1 Del=    0"},
      {"binary", binary, binary + "\n\xFF", "Rep=    0 Add=    1 Del=    0"},
      {"half a character", "\x83\n\x81", "\x83\n\x81\x40", "Rep=    1 Add=    0 Del=    0"},
      {"no text at all", "", "\n", "Rep=    0 Add=    1 Del=    0"},
  };
  for (const Case& c : cases) {
    pair.folder.Write("old.txt", c.old_bytes);
    pair.folder.Write("new.txt", c.new_bytes);
    const ProgramResult result = Compare({pair.old_path, pair.new_path, "--sbn", "--mrg"});
    EXPECT_EQ(result.status, 1) << c.name;
    EXPECT_NE(result.out.find(c.counts), std::string::npos) << c.name << "\n" << result.out;
  }
}

TEST(CompareCommand, ALineOf200MegabytesIsALine) {
  const Pair pair;
  constexpr off_t kSize = 200'000'000;
  for (const std::string& path : {pair.old_path, pair.new_path}) {
    ASSERT_EQ(truncate(path.c_str(), 0), 0);
    ASSERT_EQ(truncate(path.c_str(), kSize), 0);
  }
  const int file = open(pair.new_path.c_str(), O_WRONLY);
  ASSERT_EQ(pwrite(file, "x", 1, 5000), 1);
  close(file);
  const ProgramResult result = Compare({"--set", "OptNoCngNoOut=0", pair.old_path, pair.new_path});
  EXPECT_EQ(result.status, 1) << result.err;
  EXPECT_NE(result.out.find("OLD=    1 NEW=    1 Rep=    1"), std::string::npos) << result.out;
}

TEST(CompareCommand, PipesAreInputsAsForDiff) {
  const Pair pair;
  const ProgramResult result =
      RunProgram({"/bin/bash", "-c",
                  "'" LEDRIXC "' compare --settings none --out '" + pair.folder.path() +
                      "/r.lst' <(printf 'a\\nb\\n') <(printf 'a\\n')"});
  EXPECT_EQ(result.status, 1) << result.err;
  EXPECT_NE(result.out.find("Del=    1"), std::string::npos) << result.out;
}

// A pipe that the test fills bit by bit holds the program where the test wants it.
class HeldPair : public ::testing::Test {
 protected:
  static constexpr int kLines = 400000;

  void SetUp() override {
    std::string lines;
    for (int i = 0; i < kLines; ++i) lines += Line(i);
    pair_.folder.Write("old.txt", lines);
    pipe_ = pair_.folder.At("pipe").bytes();
    ASSERT_EQ(mkfifo(pipe_.c_str(), 0666), 0);
  }
  static std::string Line(int i) { return "line " + std::to_string(i) + "\n"; }
  static void Send(int descriptor, int first, int last) {
    for (int i = first; i < last; ++i) {
      const std::string line = Line(i);
      // The program may be gone by design of the test.
      if (write(descriptor, line.data(), line.size()) < 0) break;
    }
  }

  Pair pair_;
  std::string pipe_;
};

TEST_F(HeldPair, AFileThatShrinksEndsEarly) {
  const ProgramResult result = Compare({pair_.old_path, pipe_}, {.meanwhile = [this](pid_t) {
                                         const int descriptor = open(pipe_.c_str(), O_WRONLY);
                                         Send(descriptor, 0, kLines / 2);
                                         ASSERT_EQ(truncate(pair_.old_path.c_str(), 100), 0);
                                         Send(descriptor, kLines / 2, kLines);
                                         close(descriptor);
                                       }});
  EXPECT_EQ(result.status, 1) << result.err;
  EXPECT_NE(result.out.find("UnMatch="), std::string::npos) << result.out;
}

TEST_F(HeldPair, ASignalStopsTheJob) {
  signal(SIGPIPE, SIG_IGN);
  const ProgramResult result =
      Compare({pair_.old_path, pipe_, "--csv", "--out", pair_.folder.path() + "/"},
              {.meanwhile = [this](pid_t child) {
                const int descriptor = open(pipe_.c_str(), O_WRONLY);
                Send(descriptor, 0, kLines / 2);
                kill(child, SIGINT);
                Send(descriptor, kLines / 2, kLines);
                close(descriptor);
              }});
  signal(SIGPIPE, SIG_DFL);
  EXPECT_EQ(result.status, 2);
  EXPECT_NE(result.out.find("    中断\n"), std::string::npos) << result.out;
  const Texts csv = ReadLines(pair_.folder.At("Ledrix.CSV"));
  ASSERT_EQ(csv.size(), 2u);
  EXPECT_EQ(csv[1], "1," + pair_.old_path + ",-," + pipe_ + ",中断");
}

}  // namespace
}  // namespace ledrix
