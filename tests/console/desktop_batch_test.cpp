// The desktop program from outside: its batch line without a display, its start and end.
#include <gtest/gtest.h>

#include <regex>

#include "console/program_run.h"

namespace ledrix {
namespace {

using test::FileExists;
using test::ProgramResult;
using test::ReadLines;
using test::Sjis;
using test::Texts;

struct Batch : test::ProgramRun {
  Batch() {
    File("old file.txt", Sjis("あ\r\nb\r\n"));
    File("new.txt", Sjis("い\r\nb\r\n"), 60);
  }
  ProgramResult Run(const Texts& arguments, Texts environment = {}) const {
    environment.insert(environment.end(), {"DISPLAY=", "WAYLAND_DISPLAY=", "QT_QPA_PLATFORM="});
    return ProgramRun::Run(LEDRIX, arguments, {.environment = environment});
  }
  // Without the date and time in front of each line.
  Texts Log() const {
    if (!FileExists(folder.At("home/ledrixc.log"))) return {};
    Texts lines = ReadLines(folder.At("home/ledrixc.log"));
    const std::regex stamp(R"(\d{4}/\d\d/\d\d \d\d:\d\d:\d\d)");
    for (std::string& line : lines) {
      EXPECT_TRUE(std::regex_match(line.substr(0, 19), stamp));
      line.erase(0, 19);
    }
    return lines;
  }
};

TEST(DesktopBatch, ComparesWithoutADisplay) {
  const Batch batch;
  ProgramResult result = batch.Run({"/OLD", "old file.txt", "/New", "new.txt"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out + result.err, "");
  EXPECT_TRUE(FileExists(batch.folder.At("old file_txt_COMP.TXT")));
  EXPECT_TRUE(batch.Log().empty());

  result = batch.Run({"/old", "new.txt", "/new", "new.txt", "/out", "same.lst"});
  EXPECT_EQ(result.status, 0);
  EXPECT_FALSE(FileExists(batch.folder.At("same.lst")));  // skipped

  result = batch.Run({});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
}

TEST(DesktopBatch, LogsWhatItCannotOpen) {
  struct Case {
    Texts arguments;
    Texts log;  // "@" is the folder
  };
  const Case cases[] = {
      {{"/old", "none", "/new", "new.txt", "/out", "o"}, {"  OLD NOTHING         : @/none"}},
      {{"/old", "/new", "new.txt"},
       {"  OLD NOTHING         : /new", "  LIST OPEN ERROR     : /new_COMP.TXT"}},
      {{"/old", "none", "/new", "none2", "/out", "home"},
       {"  OLD NOTHING         : @/none", "  NEW NOTHING(削除扱) : @/none2",
        "  LIST OPEN ERROR     : @/home"}},
      {{"/old", "new.txt", "/new", "new.txt", "/out", "new.txt"},
       {"  LIST OPEN ERROR     : @/new.txt"}},
  };
  for (const Case& c : cases) {
    const Batch batch;
    if (c.arguments[1] == "/new" && geteuid() == 0) {
      continue;  // root may write into the root folder
    }
    const ProgramResult result = batch.Run(c.arguments);
    EXPECT_EQ(result.status, 2);
    Texts expected;
    const std::regex here("@");
    for (const std::string& line : c.log) {
      expected.push_back(std::regex_replace(line, here, batch.folder.path()));
    }
    EXPECT_EQ(batch.Log(), expected);
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), ssize_t(expected.size()));
    EXPECT_EQ(batch.Read("new.txt"), Sjis("い\r\nb\r\n"));
  }
}

TEST(DesktopBatch, ALogThatCannotBeWrittenChangesNothing) {
  const Batch batch;
  mkdir(batch.folder.At("home/ledrixc.log").c_str(), 0777);
  EXPECT_EQ(batch.Run({"/old", "none", "/new", "new.txt", "/out", "o"}).status, 2);
  EXPECT_EQ(batch.Run({"/old", "old file.txt", "/new", "new.txt", "/out", "o"}).status, 1);
}

TEST(DesktopBatch, UsesTheStoredSettings) {
  const Batch batch;
  mkdir(batch.folder.At("config/ledrix").c_str(), 0777);
  batch.folder.Write("config/ledrix/settings.ini",
                     "[Option]\nOptSimple=1\nCharsetCode=FULLAUTO(遅め)\nPrintCompLen=\n");
  EXPECT_EQ(batch.Run({"/old", "old file.txt", "/new", "new.txt", "/out", "o"}).status, 1);
  const Texts listing = ReadLines(batch.folder.At("o"));
  EXPECT_EQ(listing[0].substr(0, 14), "CompareColumn=");
  EXPECT_EQ(Sjis(listing[0]).size(), 146u);  // an empty width is 0 and clamped to 70
}

// The same bytes whatever the locale is; the time zone shows in the stamps and nowhere else.
TEST(DesktopBatch, ListingsDoNotDependOnTheLocale) {
  const std::regex stamp(R"(\d{4}/\d\d/\d\d \d\d:\d\d)");
  const Batch batch;
  std::string first;
  for (const auto& [zone, time] : {std::pair("TZ=Asia/Tokyo", "2024/03/09 14:05"),
                                   std::pair("TZ=America/New_York", "2024/03/09 00:05")}) {
    for (const char* locale : {"LC_ALL=C", "LC_ALL=C.UTF-8", "LC_ALL=ja_JP.SJIS"}) {
      batch.Run({"/old", "old file.txt", "/new", "new.txt", "/out", "o"}, {zone, locale});
      const NativePath listing = batch.folder.At("o");
      EXPECT_NE(ReadLines(listing).at(3).find(time), std::string::npos) << zone;
      const std::string bytes = std::regex_replace(test::ReadFile(listing), stamp, "stamp");
      if (first.empty()) first = bytes;
      EXPECT_TRUE(bytes == first) << zone << " " << locale;
    }
  }
}

// A pipe can be read once only, so looking at it must not open it: the listing is there before.
TEST(DesktopBatch, TakesAPipe) {
  const Batch batch;
  const ProgramResult result = batch.ProgramRun::Run(
      "/bin/bash", {"-c", "mkfifo p q; timeout 10 '" LEDRIX "' /old p /new q /out o & exec 3>p; "
                          "ls o; echo a >&3; exec 3>&-; echo b >q; wait $!"});
  EXPECT_EQ(result.status, 1) << result.err;
  EXPECT_EQ(result.out, "o\n");
}

// --foreground: a second signal, to the group, would end the program at once.
TEST(DesktopWindows, StartWithPathsAndEndBySignals) {
  struct Case {
    const char* script;
    int status;
    const char* printed;  // a part of it
  };
  for (const Case& c : std::vector<Case>{
           {"$L old new none", 2, "引数が多すぎます"},
           {"timeout --foreground --preserve-status 2 $L none", 0,
            "/none: ファイルが見つかりません"},
           // in a message of the start: nothing is saved then
           {"echo '[Option]\nContOutDir=1\nContOutDirPath=/none/' >config/ledrix/settings.ini\n"
            "timeout --foreground --preserve-status 1 $L && cat config/ledrix/settings.ini",
            0, "=/none/\n$"}}) {
    const Batch batch;
    mkdir(batch.folder.At("config/ledrix").c_str(), 0777);
    const ProgramResult result = batch.ProgramRun::Run(
        "/bin/dash",
        {"-c", "exec 2>&1; L='" LEDRIX " -platform offscreen'\n" + std::string(c.script)},
        {.environment = {"QT_QPA_PLATFORM=offscreen"}});
    EXPECT_EQ(result.status, c.status) << c.script;
    EXPECT_NE((result.out + "$").find(c.printed), std::string::npos) << c.script << result.out;
  }
}

}  // namespace
}  // namespace ledrix
