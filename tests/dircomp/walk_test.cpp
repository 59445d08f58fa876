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

// A chain of folders below the current one, deeper than a path can tell.
void MakeDeepTree(const NativePath& root) {
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(root.bytes());
  const std::string name(250, 'd');
  for (int depth = 0; depth < 20; ++depth) {
    ASSERT_EQ(mkdir(name.c_str(), 0700), 0);
    ASSERT_EQ(chdir(name.c_str()), 0);
  }
  std::filesystem::current_path(before);
}

using Preparation = std::function<void(TreeRun&)>;

// The job yields before it begins, when it enters a folder and before it looks at each entry: at 2
// the first folder is entered, at 3 its list has been read.
Preparation RemoveAtYield(const char* path, int number) {
  return [=](TreeRun& run) {
    run.platform.at_yield = [&run, path, number](int yield) {
      if (yield == number) std::filesystem::remove_all(run.folder.At(path).bytes());
    };
  };
}

struct FailingTree {
  const char* name;
  Preparation prepare;
  const char* trouble;  // what the last line told begins with, below the test's folder
  const char* reason;   // and ends with
};

constexpr const char* kGone = ": ファイルが見つかりません";

std::vector<FailingTree> FailingTrees() {
  return {
      {"path too long", [](TreeRun& run) { MakeDeepTree(run.folder.At("old")); }, "/old/dddd",
       "/: ファイル名が長すぎます"},
      {"listed folder removed", RemoveAtYield("old/sub", 3), "/old/sub", kGone},
      {"folder removed when it is entered", RemoveAtYield("old/sub", 5), "/old/sub/: ", kGone},
      {"folder removed while it is read", RemoveAtYield("old/sub", 6), "/old/sub/: ", kGone},
      {"root removed",
       [](TreeRun& run) { std::filesystem::remove_all(run.folder.At("old").bytes()); },
       "/old/: ", kGone},
      {"link whose target is too long",
       [](TreeRun& run) {
         const std::string target = "../" + std::string(300, 'x');
         ASSERT_EQ(symlink(target.c_str(), run.folder.At("old/link").c_str()), 0);
       },
       "/old/link: ", ": ファイル名が長すぎます"},
  };
}

TEST(DirJobs, FailAsAWholeWhenATreeCannotBeWalked) {
  for (const FailingTree& c : FailingTrees()) {
    for (const bool is_compare : {false, true}) {
      TreeRun run;
      run.File("old/a", 1);
      run.File("old/sub/f", 1);
      if (!is_compare) run.request.JobKind = JobKind::kDirEdit;
      run.folder.Write("d.lst", "of an earlier run");
      c.prepare(run);
      EXPECT_EQ(run.Result(), "    エラー") << c.name;
      EXPECT_FALSE(FileExists(run.request.OutPath)) << c.name;
      EXPECT_EQ(run.services.end(), JobEnd::kTrouble) << c.name;
      ASSERT_FALSE(run.platform.troubles.empty()) << c.name;
      const std::string& told = run.platform.troubles.back();
      EXPECT_TRUE(told.starts_with(run.folder.path() + c.trouble)) << told;
      EXPECT_TRUE(told.ends_with(c.reason)) << told;
    }
  }
}

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
    RemoveAtYield("old/b", 3)(run);
    EXPECT_EQ(run.Result(),
              is_compare ? "    UnMatch=    0 OLD=    1 NEW=    1 Rep=    0 Add=    0 Del=    0"
                         : "    FileCount:1");
    EXPECT_EQ(run.platform.troubles,
              (Texts{run.folder.path() + "/old/b: 一覧の後に無くなったため除きました"}));
    EXPECT_EQ(run.services.end(), JobEnd::kNoDifference);
  }
}

TEST(DirJobs, DoNotListTheirOwnOutput) {
  for (const char* out : {"old/out", "old/link", "old/hard"}) {
    TreeRun run;
    run.File("old/a", 1);
    run.File("new/a", 1);
    run.File("old/out", 1);
    std::filesystem::create_symlink("out", run.folder.At("old/link").bytes());
    std::filesystem::create_hard_link(run.folder.At("old/out").bytes(),
                                      run.folder.At("old/hard").bytes());
    run.request.OutPath = run.folder.At(out);
    EXPECT_EQ(run.Result(), "    UnMatch=    0 OLD=    1 NEW=    1 Rep=    0 Add=    0 Del=    0");
    run.request.JobKind = JobKind::kDirEdit;
    EXPECT_EQ(run.Result(), "    FileCount:1");
  }
}

TEST(DirComp, NamesThatDifferInWhatShiftJisLacksStayApart) {
  struct Case {
    const char* name;
    const char* old_file;
    const char* new_file;
    CompareRange range;
    const char* settings;
    bool pairs;
    bool pairs_with_snapshot;
    int replaced;  // names that a compare of the trees lists with "?"
  };
  constexpr CompareRange kCurrent = CompareRange::kCurrentPath;
  const Case cases[] = {
      {"letters", "承認é.txt", "承認è.txt", kCurrent, "", false, true, 2},
      {"the same letter", "承認é.txt", "承認é.txt", kCurrent, "", true, true, 0},
      {"letter case ignored", "É", "é", kCurrent, "", true, true, 0},
      {"letter case told apart", "É", "é", kCurrent, "DCompBinary=1", false, true, 2},
      {"kana folded", "ｱé", "アé", kCurrent, "DCompKana=0", true, true, 0},
      {"a question mark", "é", "?", kCurrent, "", false, true, 1},
      {"a question mark, kana folded", "é", "?", kCurrent, "DCompKana=0", false, true, 1},
      {"a letter whose capital Shift_JIS holds", "µ", "m", kCurrent, "", false, false, 1},
      {"bytes that are no UTF-8", "\xFF", "\xFE", kCurrent, "", false, true, 2},
      {"line ends and backslashes", "a\nb", "a\\b", kCurrent, "", false, true, 0},
      {"a yen sign", "a¥b", "a\\b", kCurrent, "", false, true, 1},
      {"folders", "é/x", "è/x", kCurrent, "", false, true, 2},
      {"folders, no path", "é/x", "è/x", CompareRange::kNoPath, "", true, true, 0},
  };
  for (const Case& c : cases) {
    TreeRun run;
    run.SetAll(c.settings);
    run.request.CompareRange = c.range;
    run.File(std::string("old/") + c.old_file, 1);
    run.File(std::string("new/") + c.new_file, 1);
    const std::string counts = run.Result();
    EXPECT_EQ(counts.find("UnMatch=    0") != std::string::npos, c.pairs) << c.name << counts;
    Texts told;
    if (c.replaced > 0) {
      told.push_back(std::to_string(c.replaced) +
                     " 件の名前に Shift_JIS にない文字があり ? で書きました");
    }
    EXPECT_EQ(run.platform.troubles, told) << c.name;

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
      EXPECT_EQ(pairs, path == old_path || c.pairs_with_snapshot) << c.name;
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
  constexpr time_t kTwoDays = 2 * 86400;
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
