// What the built programs do in places that are not as they should be.
#include <gtest/gtest.h>

#include "console/program_run.h"

namespace ledrix {
namespace {

using test::ProgramResult;
using test::ProgramRun;
using test::Texts;

const std::string kControls = "a\x1B[31m\x07\x7F\xC2\x9B表";

ProgramResult Shell(const ProgramRun& run, const std::string& script, Texts environment = {}) {
  return run.Run("/bin/bash", {"-c", script}, {.environment = std::move(environment)});
}

TEST(ProgramEnds, ATerminalGetsNoControlCharacters) {
  const ProgramRun run;
  run.File(kControls, "abc\n");
  const Texts commands = {"judge 'NAME'", "judge 'NAME/x'",
                          "compare 'NAME' new.txt --settings none",
                          "compare 'NAME' none --settings none", "'NAME'"};
  for (std::string command : commands) {
    if (const size_t at = command.find("NAME"); at != std::string::npos) {
      command.replace(at, 4, kControls);
    }
    const ProgramResult plain = Shell(run, "'" LEDRIXC "' " + command);
    EXPECT_NE((plain.out + plain.err).find(kControls), std::string::npos) << command;
    run.File("command", "'" LEDRIXC "' " + command + "\n");
    const ProgramResult shown = Shell(run, "script -qec 'bash command' /dev/null");
    EXPECT_NE(shown.out.find("a?[31m???表"), std::string::npos) << shown.out;
    EXPECT_EQ(shown.out.find_first_of("\x1B\x07\x7F"), std::string::npos) << command;
  }
}

#ifdef LEDRIX
constexpr const char* kSettings = "config/ledrix/settings.ini";

TEST(ProgramEnds, SettingsThatCannotBeReadAreLogged) {
  const ProgramRun run;
  const ProgramResult result =
      Shell(run, std::string("mkdir -p ") + kSettings +
                     "; QT_QPA_PLATFORM= '" LEDRIX "' /old old.txt /new new.txt");
  EXPECT_EQ(result.status, 2) << result.err;
  EXPECT_EQ(run.Read("home/ledrixc.log").substr(19),
            "  SETTINGS ERROR      : " + run.At(kSettings) + "\r\n");
}

TEST(ProgramEnds, NoBoxWhereNobodySeesIt) {
  const ProgramRun run;
  ASSERT_EQ(Shell(run, "mkdir config/ledrix").status, 0);
  run.File(kSettings, "[Option]\nCharsetCode=NOSUCHCODE\n");
  for (const char* const platform : {"QT_QPA_PLATFORM=offscreen", "QT_QPA_PLATFORM=minimal"}) {
    const ProgramResult result =
        Shell(run, "timeout 60 '" LEDRIX "' /old old.txt /new new.txt /out o", {platform});
    EXPECT_EQ(result.status, 2) << platform << result.err;
  }
}
#endif

}  // namespace
}  // namespace ledrix
