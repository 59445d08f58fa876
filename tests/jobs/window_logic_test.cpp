// What the main window decides without any widget.
#include <gtest/gtest.h>
#include <sys/stat.h>

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
  for (const auto& row : test::ReadTable("folder_sync.tsv")) {
    const auto found =
        CorrespondingFolder(NativePath(row[0]), NativePath(row[1]), NativePath(row[2]));
    EXPECT_EQ(found ? found->bytes() : "nowhere", row[3]) << row[0] << " > " << row[1];
  }
}

TEST(OutputPreview, TellsWhereTheNextListingGoes) {
  const auto list = [](const std::string& names) {
    FileList files;
    for (const std::string& name : SplitAt(names, ' ')) {
      if (!name.empty()) files.entries.push_back({name, true});
    }
    return files;
  };
  for (const auto& row : test::ReadTable("output_previews.tsv")) {
    test::TestRun run;
    run.Set("ContOutDirPath", "/fix");
    run.job.outputs.OutputDirMode = static_cast<OutputDirMode>(std::stoi(row[0]));
    run.job.outputs.ElseOutputDir = NativePath("/e/");
    const FileSides sides = {FileSide{NativePath("/o/"), "", list(row[1])},
                             FileSide{NativePath("/n/"), "", list(row[2])}};
    EXPECT_EQ(OutputPreview(run.options, run.job.outputs, sides), " LIST=" + row[3]);
    FollowOutputSide(run.job.outputs, sides);
    EXPECT_EQ(run.job.outputs.ElseOutputDir.bytes(), row[4]);
    run.job.outputs.OptSbnList = run.job.outputs.OptCsvList = run.job.outputs.OptMrgSrc = true;
    EXPECT_EQ(OutputPreview(run.options, run.job.outputs, sides),
              " LIST=" + row[3] + " / Sbn List / Csv List / Mrg Src");
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
