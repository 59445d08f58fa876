// "ledrix /old ... /new ..." from outside, without a display.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <regex>

#include "support/program.h"
#include "support/test_files.h"

namespace ledrix {
namespace {

using test::FileExists;
using test::ProgramResult;
using test::ReadLines;
using test::RunProgram;
using test::SetModified;
using test::Sjis;
using test::TempFolder;
using Texts = std::vector<std::string>;

struct Batch {
  TempFolder folder;
  Batch() {
    folder.Write("old file.txt", Sjis("あ\r\nb\r\n"));
    folder.Write("new.txt", Sjis("い\r\nb\r\n"));
    SetModified(folder.At("old file.txt"), test::kTestTime);
    SetModified(folder.At("new.txt"), test::kTestTime + 60);
    mkdir(folder.At("home").c_str(), 0777);
    mkdir(folder.At("config").c_str(), 0777);
  }
  ProgramResult Run(const Texts& arguments, Texts environment = {}) const {
    Texts command = {LEDRIX};
    command.insert(command.end(), arguments.begin(), arguments.end());
    for (const char* variable : {"DISPLAY=", "WAYLAND_DISPLAY=", "QT_QPA_PLATFORM="}) {
      environment.emplace_back(variable);
    }
    environment.push_back("LEDRIX_HOME=" + folder.path() + "/home");
    environment.push_back("XDG_CONFIG_HOME=" + folder.path() + "/config");
    return RunProgram(command, {.environment = environment, .folder = folder.path()});
  }
  Texts Log() const {
    const NativePath log = folder.At("home/ledrixc.log");
    if (!FileExists(log)) return {};
    Texts lines = ReadLines(log);
    for (std::string& line : lines) {
      EXPECT_TRUE(
          std::regex_match(line.substr(0, 19), std::regex(R"(\d{4}/\d\d/\d\d \d\d:\d\d:\d\d)")));
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
    Texts expected = c.log;
    for (std::string& line : expected) {
      if (const size_t at = line.find('@'); at != std::string::npos) {
        line.replace(at, 1, batch.folder.path());
      }
    }
    EXPECT_EQ(batch.Log(), expected);
    EXPECT_EQ(static_cast<size_t>(std::count(result.err.begin(), result.err.end(), '\n')),
              expected.size());
    EXPECT_EQ(test::ReadFile(batch.folder.At("new.txt")), Sjis("い\r\nb\r\n"));
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
  std::string first;
  for (const char* zone : {"TZ=Asia/Tokyo", "TZ=America/New_York"}) {
    for (const char* locale : {"LC_ALL=C", "LC_ALL=C.UTF-8", "LC_ALL=ja_JP.SJIS"}) {
      const Batch batch;
      EXPECT_EQ(batch.Run({"/old", "old file.txt", "/new", "new.txt", "/out", "o"}, {zone, locale})
                    .status,
                1);
      const NativePath listing = batch.folder.At("o");
      const std::string shown = ReadLines(listing).at(3);
      const std::string old_stamp = std::string(zone).find("Tokyo") != std::string::npos
                                        ? "2024/03/09 14:05"
                                        : "2024/03/09 00:05";
      EXPECT_NE(shown.find(old_stamp), std::string::npos) << shown;
      std::string bytes = std::regex_replace(test::ReadFile(listing), stamp, "yyyy/mm/dd hh:mm");
      for (size_t at; (at = bytes.find(batch.folder.path())) != std::string::npos;) {
        bytes.replace(at, batch.folder.path().size(), "@");
      }
      if (first.empty()) first = bytes;
      EXPECT_TRUE(bytes == first) << zone << " " << locale;
    }
  }
}

}  // namespace
}  // namespace ledrix
