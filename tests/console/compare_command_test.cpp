// "ledrixc compare" from outside.
#include <gtest/gtest.h>
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
  for (const Texts& arguments :
       {Texts{"--help"}, Texts{"compare", "--help"}, Texts{"--help-options"}, Texts{"--version"}}) {
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

}  // namespace
}  // namespace ledrix
