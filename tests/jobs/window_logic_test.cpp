// What the main window decides without any widget.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "jobs/command_line.h"
#include "jobs/folder_sync.h"
#include "jobs/output_preview.h"
#include "platform/file_copy.h"
#include "platform/folders.h"
#include "support/test_run.h"
#include "text/ascii.h"

namespace ledrix {
namespace {

using Texts = std::vector<std::string>;

TEST(FolderSync, GoesTheSameWayOnTheOtherSide) {
  struct Case {
    const char* from;
    const char* to;
    const char* other;
    const char* expected;  // nullptr: nowhere
  };
  const Case cases[] = {
      {"/p/a/", "/p/a/x/", "/q/b/", "/q/b/x/"}, {"/p/a/", "/p/a/x/y/", "/q/b/", "/q/b/x/y/"},
      {"/p/a/x/", "/p/a/", "/q/b/X/", "/q/b/"}, {"/p/a/x/", "/p/a/y/", "/q/b/x/", "/q/b/y/"},
      {"/p/a/x/", "/p/a/", "/q/b/", nullptr},   {"/p/a/", "/", "/p/a/", "/"},
      {"/p/a/", "/", "/a/", nullptr},           {"/", "/usr/", "/", "/usr/"},
      {"/p/a/", "/p/a/", "/q/", "/q/"},         {"/p/ab/", "/p/a/", "/q/ab/", "/q/a/"},
  };
  for (const Case& c : cases) {
    const auto found =
        CorrespondingFolder(NativePath(c.from), NativePath(c.to), NativePath(c.other));
    EXPECT_EQ(found ? found->bytes() : "nowhere", c.expected ? c.expected : "nowhere")
        << c.from << " > " << c.to << " beside " << c.other;
  }
}

TEST(OutputPreview, TellsWhereTheNextListingGoes) {
  struct Case {
    OutputDirMode mode;
    const char* old_selected;
    const char* new_selected;
    const char* expected;
    const char* else_folder;
  };
  const Case cases[] = {
      {OutputDirMode::kOldDir, "a.b", "c", "/o/a_b_COMP.TXT", "/o/"},
      {OutputDirMode::kOldDir, "", "c", "/o/ <Old File Name> _COMP.TXT", "/o/"},
      {OutputDirMode::kNewDir, "a", "c", "/n/c_COMP.TXT", "/n/"},
      {OutputDirMode::kNewDir, "a", "c d", "/n/ <New File Name> _COMP.TXT", "/n/"},
      {OutputDirMode::kElse, "a", "c", "/e/a_COMP.TXT", "/e/"},
      {OutputDirMode::kElse, "a b", "c", "/e/ <Old File Name> _COMP.TXT", "/e/"},
      {OutputDirMode::kConstant, "a", "", "/fix/a_COMP.TXT", "/e/"},
  };
  for (const Case& c : cases) {
    test::TestRun run;
    run.Set("ContOutDirPath", "/fix");
    run.job.outputs.OutputDirMode = c.mode;
    run.job.outputs.ElseOutputDir = NativePath("/e/");
    const auto list = [](const char* names) {
      FileList files;
      for (const std::string& name : SplitAt(names, ' ')) {
        if (!name.empty()) files.entries.push_back({name, true});
      }
      return files;
    };
    const FileSides sides = {FileSide{NativePath("/o/"), "", list(c.old_selected)},
                             FileSide{NativePath("/n/"), "", list(c.new_selected)}};
    EXPECT_EQ(OutputPreview(run.options, run.job.outputs, sides),
              std::string(" LIST=") + c.expected);
    FollowOutputSide(run.job.outputs, sides);
    EXPECT_EQ(run.job.outputs.ElseOutputDir.bytes(), c.else_folder);
    run.job.outputs.OptSbnList = run.job.outputs.OptCsvList = run.job.outputs.OptMrgSrc = true;
    EXPECT_EQ(OutputPreview(run.options, run.job.outputs, sides),
              std::string(" LIST=") + c.expected + " / Sbn List / Csv List / Mrg Src");
  }
}

TEST(ResultEntries, TellOfTheirOutput) {
  const Texts entries = {"( 1 Compare ) /a b/x ", "    UnMatch=    1", "(99 StepCSV ) /y"};
  EXPECT_EQ(OutputOfEntry(entries, 0).bytes(), "/a b/x ");
  EXPECT_EQ(OutputOfEntry(entries, 1).bytes(), "/a b/x ");
  EXPECT_EQ(OutputOfEntry(entries, 2).bytes(), "/y");
  EXPECT_TRUE(OutputOfEntry(entries, 3).empty());
  EXPECT_TRUE(OutputOfEntry({"    text"}, 0).empty());
}

TEST(CommandLine, KeepsWhatIsNoKeyword) {
  const auto others = [](const Texts& arguments) { return ParseCommandLine(arguments).others; };
  EXPECT_EQ(others({"/a", "b c"}), (Texts{"/a", "b c"}));
  EXPECT_EQ(others({"/old", "x", "y", "/Dm", "/dg", "z", "/new"}), (Texts{"y", "z"}));
}

TEST(CopyFile, KeepsTimeAndPermissionsAndTheOldFileOnFailure) {
  const test::TempFolder folder;
  const NativePath from = folder.Write("from", std::string(600000, 'x') + "\r\n\x81");
  test::SetModified(from, test::kTestTime, 123456789);
  chmod(from.c_str(), 0640);
  const NativePath to = folder.Write("to", "before");
  EXPECT_TRUE(CopyFile(from, to).ok());
  EXPECT_TRUE(test::ReadFile(to) == test::ReadFile(from));
  struct stat status {};
  ASSERT_EQ(stat(to.c_str(), &status), 0);
  EXPECT_EQ(status.st_mtim.tv_sec, test::kTestTime);
  EXPECT_EQ(status.st_mtim.tv_nsec, 123456789);
  EXPECT_EQ(status.st_mode & 0777, 0640u);

  EXPECT_FALSE(CopyFile(from, from).ok());
  EXPECT_FALSE(CopyFile(folder.At("none"), to).ok());
  EXPECT_FALSE(CopyFile(from, folder.At("none/x")).ok());
  EXPECT_FALSE(CopyFile(from, NativePath(folder.path())).ok());
  EXPECT_FALSE(CopyFile(NativePath(folder.path()), to).ok());
  EXPECT_TRUE(test::ReadFile(to) == test::ReadFile(from));
  EXPECT_EQ(ReadFolder(NativePath(folder.path())).value().size(), 2u);
}

}  // namespace
}  // namespace ledrix
