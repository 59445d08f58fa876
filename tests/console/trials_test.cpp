// Both programs from outside: tables of scripts, of outputs and of refused arguments.
#include <gtest/gtest.h>

#include <algorithm>

#include "console/program_run.h"
#include "text/ascii.h"

namespace ledrix {
namespace {

using test::ProgramResult;
using test::ProgramRun;
using test::Texts;

// A trailing "$" in the third column asks for nothing behind the text before it.
void ExpectTrials(const char* table, const Texts& environment) {
  for (const auto& row : test::ReadTable(table)) {
    const ProgramRun run;
    const ProgramResult result = run.Run("/bin/sh", {"-c", row[0]}, environment);
    EXPECT_EQ(std::to_string(result.status), row[1]) << row[0] << "\n" << result.out << result.err;
    std::string text = row[2];
    const bool ends = text.ends_with('$');
    if (ends) text.pop_back();
    EXPECT_TRUE(ends ? result.out.ends_with(text) : result.out.find(text) != std::string::npos)
        << row[0] << "\n"
        << result.out << result.err;
  }
}

TEST(Trials, EndAsTheirRowsSay) {
  ExpectTrials("trials.tsv", {"L=" LEDRIXC, "E=" LEDRIX_SOURCE_FOLDER "/examples",
                              "M=" LEDRIX_SOURCE_FOLDER "/docs/manual/en/ledrixc.md"});
}

#ifdef LEDRIX
TEST(DesktopTrials, EndAsTheirRowsSay) {
  ExpectTrials("desktop_trials.tsv",
               {"D=" LEDRIX, "DISPLAY=", "WAYLAND_DISPLAY=", "QT_QPA_PLATFORM="});
}
#endif

TEST(CompareCommand, WritesItsOutputsWhereItIsTold) {
  for (const auto& row : test::ReadTable("console_outputs.tsv")) {
    ProgramRun run;
    run.Made();
    const ProgramResult result =
        run.Run(LEDRIXC, SplitAt("compare --settings none old.txt new.txt" + row[0], ' '));
    EXPECT_EQ(result.status, 1) << row[0];
    EXPECT_EQ(result.err, "") << row[0];
    EXPECT_EQ(run.Made(), SplitAt(row[1], ' ')) << row[0];
    EXPECT_TRUE(run.InputsAreUntouched()) << row[0];
  }
}

// One clear message, exit status 2, no output left that looks complete, inputs untouched.
TEST(Console, RefusesWhatItCannotUse) {
  for (const auto& row : test::ReadTable("console_refusals.tsv")) {
    ProgramRun run;
    run.File("bad.ddf", "\\x\r\nnonsense\r\n");
    run.Made();
    const ProgramResult result = run.Run(LEDRIXC, SplitAt(row[0], ' '));
    EXPECT_EQ(result.status, 2) << row[0] << result.out;
    EXPECT_NE(result.err.find(row[1]), std::string::npos) << row[0] << "\n" << result.err;
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    EXPECT_EQ(result.out.find("変更なし"), std::string::npos) << row[0];
    Texts made = run.Made();
    std::erase_if(made, [](const std::string& name) { return name.starts_with("home/"); });  // logs
    EXPECT_EQ(made, Texts()) << row[0];
    EXPECT_TRUE(run.InputsAreUntouched()) << row[0];
  }
}

}  // namespace
}  // namespace ledrix
