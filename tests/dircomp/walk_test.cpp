// What a directory job makes of trees that cannot be read to their end, change meanwhile, or hold
// names and times that cannot be written.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <limits>

#include "dircomp/dir_compare.h"
#include "dircomp/tree_run.h"
#include "text/utf8.h"

namespace ledrix::modDComp {
namespace {

using test::FileExists;
using test::Texts;
using test::TreeRun;

TEST(DirJobs, RemoveNoInputAndNothingButFiles) {
  TreeRun run;
  run.request.NewPath = run.folder.Write("bad.ddf", "\\x\r\nno record\r\n");
  for (const char* out : {"bad.ddf", "link-to-bad", "folder", "pipe"}) {
    run.request.OutPath = run.folder.At(out);
    if (std::string_view(out) == "link-to-bad") {
      ASSERT_EQ(symlink("bad.ddf", run.request.OutPath.c_str()), 0);
    } else if (std::string_view(out) == "folder") {
      ASSERT_EQ(mkdir(run.request.OutPath.c_str(), 0700), 0);
    } else if (std::string_view(out) == "pipe") {
      run.request.OldPath = run.folder.At("none.ddf");  // fails before the output is opened
      ASSERT_EQ(mkfifo(run.request.OutPath.c_str(), 0600), 0);
    }
    EXPECT_EQ(run.Result(), "    エラー");
    struct stat status {};
    EXPECT_EQ(lstat(run.request.OutPath.c_str(), &status), 0) << out;
  }
  EXPECT_TRUE(FileExists(run.folder.At("bad.ddf")));
  run.request.OutPath = run.folder.Write("d.lst", "of an earlier run");
  EXPECT_EQ(run.Result(), "    エラー");
  EXPECT_FALSE(FileExists(run.folder.At("d.lst")));
}

TEST(DirJobs, LeaveOutAFileThatVanishes) {
  for (const bool is_compare : {false, true}) {
    TreeRun run;
    for (const char* name : {"old/a", "old/b", "new/a"}) run.File(name, 1);
    if (!is_compare) run.request.JobKind = JobKind::kDirEdit;
    run.platform.at_yield = [&run](int yield) {  // the third comes when a list has been read
      if (yield == 3) std::filesystem::remove(run.folder.At("old/b").bytes());
    };
    EXPECT_EQ(run.Result(),
              is_compare ? "    UnMatch=    0 OLD=    1 NEW=    1 Rep=    0 Add=    0 Del=    0"
                         : "    FileCount:1");
    EXPECT_EQ(run.platform.troubles,
              (Texts{run.folder.path() + "/old/b: 一覧の後に無くなったため除きました"}));
    EXPECT_EQ(run.services.end(), JobEnd::kNoDifference);
  }
}

TEST(DirComp, NamesThatDifferInWhatShiftJisLacksStayApart) {
  for (const auto& row : test::ReadTable("replaced_names.tsv")) {
    TreeRun run;
    run.SetAll(row[3]);
    run.request.CompareRange =
        row[2] == "none" ? CompareRange::kNoPath : CompareRange::kCurrentPath;
    run.File("old/" + row[0], 1);
    run.File("new/" + row[1], 1);
    const std::string counts = run.Result();
    EXPECT_EQ(counts.find("UnMatch=    0") != std::string::npos, row[4] == "yes") << row[0];
    const std::string told = row[6] + " 件の名前に Shift_JIS にない文字があり ? で書きました";
    EXPECT_EQ(run.platform.troubles, row[6] == "0" ? Texts{} : Texts{told}) << row[0];

    // A tree never differs from its own snapshot.
    const NativePath old_path = run.request.OldPath;
    const NativePath new_path = run.request.NewPath;
    run.Snapshot(old_path);
    run.request.JobKind = JobKind::kDirComp;
    run.request.OldPath = run.folder.At("s.ddf");
    run.request.OutPath = run.folder.At("d.lst");
    for (const NativePath& path : {old_path, new_path}) {
      run.request.NewPath = path;
      const bool pairs = run.Result().find("UnMatch=    0") != std::string::npos;
      EXPECT_EQ(pairs, path == old_path || row[5] == "yes") << row[0];
    }
  }
}

// Many names with one key, half of them on both sides: each finds its own partner.
TEST(DirComp, NamesOfOneKeyPairByTheirOwnCharacters) {
  TreeRun run;
  for (char32_t c = 0xC0; c < 0xF0; ++c) {
    std::string name;
    AppendUtf8(name, c);
    // Sizes tell a wrong pair from a right one; the order of the sides differs by the folders.
    run.File("old/" + std::string(c % 5, 'x') + "/" + name, c);
    if (c % 2 == 0) run.File("new/" + std::string((c + 3) % 7, 'y') + "/" + name, c);
  }
  run.request.CompareRange = CompareRange::kNoPath;
  run.SetAll("DCompBinary=1");
  EXPECT_EQ(run.Result(), "    UnMatch=   24 OLD=   48 NEW=   24 Rep=    0 Add=    0 Del=   24");
}

TEST(LocalTime, AStampThatCannotBeWrittenIsReadBackEqual) {
  constexpr time_t kTwoDays = time_t{2} * 86400;
  constexpr time_t kFirst = -62'135'596'800;  // 0001/01/01 in Greenwich
  constexpr time_t kEnd = 253'402'268'400;    // 10000/01/01 in Japan
  const time_t stamps[] = {-99'999'999'999,
                           kFirst - kTwoDays,
                           kEnd,
                           999'999'999'999'999,
                           std::numeric_limits<time_t>::max(),
                           std::numeric_limits<time_t>::min()};
  for (const time_t stamp : stamps) {
    const LocalTime shown = ToLocalTime({stamp, 5});
    EXPECT_EQ(FormatDateTime(shown), "9999/12/31 23:59:59") << stamp;
    const std::string written = FormatGeneral(shown);
    const auto read = ParseDateTime(written);
    ASSERT_TRUE(read) << written;
    EXPECT_EQ(CivilSeconds(*read), CivilSeconds(shown));
  }
  EXPECT_EQ(FormatDateTime(ToLocalTime({kEnd - 2, 0})), "9999/12/31 23:59:58");
  EXPECT_EQ(FormatDate(ToLocalTime({kFirst + kTwoDays, 0})), "0001/01/03");
}

}  // namespace
}  // namespace ledrix::modDComp
