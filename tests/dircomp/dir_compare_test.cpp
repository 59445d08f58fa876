#include "dircomp/dir_compare.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <random>

#include "dircomp/dir_info_file.h"
#include "dircomp/qsort.h"
#include "support/test_run.h"
#include "text/code_page_932.h"
#include "text/utf8.h"

namespace ledrix::modDComp {
namespace {

using test::FileExists;
using test::ReadLines;
using test::TempFolder;
using test::TestRun;
using Texts = std::vector<std::string>;

constexpr time_t kHour = 3600;
constexpr time_t kNineHours = 9 * kHour;

// Two trees in one folder, and the job that compares them.
struct TreeRun : TestRun {
  TempFolder folder;

  TreeRun() {
    request.JobKind = JobKind::kDirComp;
    request.CompareRange = CompareRange::kCurrentPath;
    request.OldPath = folder.At("old/");
    request.NewPath = folder.At("new/");
    request.OutPath = folder.At("d.lst");
    std::filesystem::create_directories(request.OldPath.bytes());
    std::filesystem::create_directories(request.NewPath.bytes());
    sides[0].filter_entry = "全て (*.*)";
  }
  // Makes a file of so many bytes, last written so many seconds after the test's time.
  void File(const std::string& name, size_t size, time_t later = 0, long nanoseconds = 0) {
    const NativePath path = folder.At(name);
    std::filesystem::create_directories(DirOf(path).bytes());
    folder.Write(name, std::string(size, 'x'));
    test::SetModified(path, test::kTestTime + later, nanoseconds);
  }
  std::string Result() {
    Run();
    return front_end.results.back();
  }
  // The snapshot of a tree as lines; the tree's own folder reads "@".
  Texts Snapshot(const NativePath& root) {
    request.JobKind = JobKind::kDirEdit;
    request.OldPath = root;
    request.OutPath = folder.At("s.ddf");
    Run();
    return ReadLines(request.OutPath);
  }
};

// What the order of equal keys is made of: the steps themselves, on keys and their numbers.
void PlainQSort(std::vector<std::pair<std::string, int>>& keys, int low, int high) {
  if (low >= high) return;
  const double middle = (low + high) / 2.0;
  std::swap(keys[low], keys[static_cast<size_t>(std::nearbyint(middle))]);
  int last = low;
  for (int i = low + 1; i <= high; ++i) {
    if (keys[i].first < keys[low].first) std::swap(keys[++last], keys[i]);
  }
  std::swap(keys[low], keys[last]);
  PlainQSort(keys, low, last - 1);
  PlainQSort(keys, last + 1, high);
}

TEST(QSort, GivesTheOrderOfItsSteps) {
  std::mt19937 random(17);
  for (int round = 0; round < 3000; ++round) {
    const int size = static_cast<int>(random() % 60);
    const auto kinds = 1 + random() % (round % 2 == 0 ? 3 : 40);
    std::vector<std::pair<std::string, int>> plain = {{"", 0}};
    for (int i = 1; i <= size; ++i) plain.emplace_back(std::to_string(random() % kinds), i);
    const auto original = plain;
    std::vector<QSort::SortItem> items;
    items.reserve(original.size());
    for (const auto& [key, number] : original) items.push_back({key, static_cast<size_t>(number)});
    PlainQSort(plain, 0, size);
    QSort::Sort(items);
    for (int i = 0; i <= size; ++i) {
      ASSERT_EQ(items[i].key, plain[i].first);
      ASSERT_EQ(static_cast<int>(items[i].entry), plain[i].second) << "round " << round;
    }
  }
}

TEST(QSort, SurvivesAMillionEqualKeys) {
  for (const char* last : {"same", "zzz", "a"}) {
    std::vector<QSort::SortItem> items(1'000'000, {"same", 0});
    for (size_t i = 0; i < items.size(); ++i) items[i].entry = i;
    items[0].key = "";
    items.back().key = last;
    QSort::Sort(items);
    EXPECT_EQ(items[0].entry, 0u);
    EXPECT_TRUE(std::is_sorted(items.begin(), items.end(),
                               [](const auto& a, const auto& b) { return a.key < b.key; }));
  }
  std::vector<QSort::SortItem> three = {{"", 0}, {"k", 1}, {"k", 2}, {"k", 3}};
  QSort::Sort(three);
  EXPECT_EQ(three[1].entry, 2u);
  EXPECT_EQ(three[2].entry, 1u);
  EXPECT_EQ(three[3].entry, 3u);
  EXPECT_EQ(QSort::CompareKeys("a", "a"), 0);
  EXPECT_EQ(QSort::CompareKeys("a", "ab"), -1);
  EXPECT_EQ(QSort::CompareKeys("\x81", "a"), 1);
}

TEST(DirEdit, WritesARecordForEachFile) {
  TreeRun run;
  run.File("old/main.c", 96);
  run.File("old/lib/util.c", 40, -5 * kHour);
  run.File("old/lib/midnight", 1, 10 * kHour - 307);
  run.File("old/.hidden", 0, 0, 999'999'999);
  run.File("old/表,x\\y😀.txt", 3);
  run.File("old/line\nbreak", 1);
  std::filesystem::create_directories(run.folder.At("old/empty").bytes());
  std::filesystem::create_directories(run.folder.At("outside/sub").bytes());
  run.File("outside/far", 7);
  ASSERT_EQ(mkfifo(run.folder.At("old/pipe").c_str(), 0600), 0);
  for (const auto& [target, link] :
       {std::pair("main.c", "old/to-file"), std::pair("none", "old/dangling"),
        std::pair(".", "old/loop"), std::pair("..", "old/up"), std::pair("lib", "old/inside"),
        std::pair("../outside", "old/z1"), std::pair("../outside", "old/z2")}) {
    ASSERT_EQ(symlink(target, run.folder.At(link).c_str()), 0);
  }
  std::string root = run.folder.path() + "\\old";
  std::replace(root.begin(), root.end(), '/', '\\');
  EXPECT_EQ(run.Snapshot(run.folder.At("old/")),
            (Texts{root, "\\,.hidden,2024/03/09 14:05:07,0", "\\lib\\,midnight,2024/03/10,1",
                   "\\lib\\,util.c,2024/03/09 9:05:07,40", "\\,line?break,2024/03/09 14:05:07,1",
                   "\\,main.c,2024/03/09 14:05:07,96", "\\,to-file,2024/03/09 14:05:07,96",
                   "\\z1\\,far,2024/03/09 14:05:07,7", "\\,表,x?y?.txt,2024/03/09 14:05:07,3"}));
  EXPECT_EQ(run.front_end.results.back(), "    FileCount:8");
  EXPECT_EQ(run.front_end.bar_texts.back(), "FileCount:8");
}

TEST(DirEdit, AStopLeavesTheFilesOfFoldersBeingWalked) {
  TreeRun run;
  run.File("old/a/one", 1);
  run.File("old/b/two", 1);
  run.File("old/three", 1);
  run.platform.stop_at_yield = 3;  // the job's own, the root, then a
  const Texts lines = run.Snapshot(run.folder.At("old/"));
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[1].substr(0, 8), "\\,three,");
  EXPECT_EQ(run.services.end(), JobEnd::kTrouble);
}

TEST(DirEdit, TellsOfAnOutputThatCannotBeCreated) {
  TreeRun run;
  run.request.JobKind = JobKind::kDirEdit;
  run.request.OutPath = run.folder.At("no/s.ddf");
  run.Run();
  EXPECT_EQ(run.platform.messages.size(), 1u);
  EXPECT_EQ(run.services.end(), JobEnd::kTrouble);
}

TEST(DirComp, ClassifiesEachPair) {
  struct Case {
    const char* name;
    const char* settings;
    size_t size_difference;
    time_t apart;
    long nanoseconds;
    const char* result;  // matching or updated
  };
  const Case cases[] = {
      {"equal", "", 0, 0, 0, "matching"},
      {"parts of a second do not count", "", 0, 0, 999'999'999, "matching"},
      {"size", "DComp1s=1|DComp9h=1", 1, 0, 0, "updated"},
      {"one second", "", 0, 1, 0, "updated"},
      {"one second tolerated", "DComp1s=1", 0, -1, 0, "matching"},
      {"two seconds", "DComp1s=1", 0, 2, 0, "updated"},
      {"nine hours", "DComp1s=1", 0, kNineHours, 0, "updated"},
      {"nine hours tolerated", "DComp9h=1", 0, -kNineHours, 0, "matching"},
      {"nine hours and a second", "DComp9h=1", 0, kNineHours + 1, 0, "updated"},
      {"both tolerated", "DComp9h=1|DComp1s=1", 0, kNineHours + 1, 0, "matching"},
      {"8:59:59", "DComp9h=1|DComp1s=1", 0, kNineHours - 1, 0, "updated"},
      {"nine hours across the year", "DComp9h=1", 0, 0, 0, "matching"},
  };
  for (const Case& c : cases) {
    TreeRun run;
    run.SetAll(c.settings);
    const time_t base = std::string_view(c.name).find("year") != std::string_view::npos
                            ? 1735660800 - test::kTestTime  // 2025/01/01 1:00:00 in Japan
                            : 0;
    run.File("old/f", 5, base);
    run.File("new/f", 5 + c.size_difference, base + c.apart - (base != 0 ? kNineHours : 0),
             c.nanoseconds);
    const bool matching = std::string_view(c.result) == "matching";
    EXPECT_EQ(run.Result(), std::string("    UnMatch=    ") + (matching ? "0" : "1") +
                                " OLD=    1 NEW=    1 Rep=    " + (matching ? "0" : "1") +
                                " Add=    0 Del=    0")
        << c.name;
    EXPECT_EQ(run.services.end(), matching ? JobEnd::kNoDifference : JobEnd::kDifference);
  }
}

TEST(DirComp, PairsByTheRangeAndTheNameRules) {
  struct Case {
    const char* name;
    const char* old_file;
    const char* new_file;
    CompareRange range;
    const char* settings;
    const char* filter;
    bool pairs;
  };
  constexpr CompareRange kCurrent = CompareRange::kCurrentPath;
  const Case cases[] = {
      {"other roots, full path", "f", "f", CompareRange::kFullPath, "", "", false},
      {"same folder", "a/f", "a/f", kCurrent, "", "", true},
      {"other folder", "a/f", "b/f", kCurrent, "", "", false},
      {"other folder, no path", "a/f", "b/f", CompareRange::kNoPath, "", "", true},
      {"case ignored", "Main.C", "MAIN.c", kCurrent, "", "", true},
      {"case told apart", "Main.C", "MAIN.c", kCurrent, "DCompBinary=1", "", false},
      {"full-width case ignored", "ａé", "Ａé", kCurrent, "", "", true},
      {"widths told apart", "ｱB", "アＢ", kCurrent, "", "", false},
      {"widths ignored", "ｶﾞﾊﾟｳﾞﾜﾞ b", "ガパヴワ゛　Ｂ", kCurrent, "DCompKana=0", "", true},
      {"filter takes part", "x.CBL", "x.CBL", kCurrent, "DCompSelect=1", "CBLｿｰｽ (*.CBL;*.COB)",
       true},
      {"filter leaves out by case", "x.cbl", "x.cbl", kCurrent, "DCompSelect=1", "CBLｿｰｽ (*.CBL)",
       false},
      {"filter not wanted", "x.cbl", "x.cbl", kCurrent, "", "CBLｿｰｽ (*.CBL)", true},
      {"names that Shift_JIS lacks", "😀", "😁", kCurrent, "", "", true},
  };
  for (const Case& c : cases) {
    TreeRun run;
    run.SetAll(c.settings);
    run.request.CompareRange = c.range;
    run.sides[0].filter_entry = c.filter;
    run.File(std::string("old/") + c.old_file, 1);
    run.File(std::string("new/") + c.new_file, 1);
    const std::string listing_lines = run.Result();
    const Texts lines = ReadLines(run.request.OutPath);
    EXPECT_EQ(lines.back().find("一致=    1") != std::string::npos, c.pairs) << c.name;
  }
}

TEST(DirComp, ListingsAreRecordedByteForByte) {
  for (const int width : {70, 120}) {
    TreeRun run;
    run.options.PrintDCompLen = static_cast<int16_t>(width);
    const std::string deep = "長い名前のフォルダ/" + std::string(60, 'd') + "/";
    run.File("old/same", 1);
    run.File("new/same", 1);
    run.File("old/" + deep + "gone", 12345);
    run.File("new/" + deep + "come 表.CBL", 1);
    run.File("old/later", 3);
    run.File("new/later", 3, 60);
    run.File("old/earlier", 3);
    run.File("new/earlier", 3, -60);
    run.File("old/bigger", 3);
    run.File("new/bigger", 4);
    run.File("new/" + std::string(200, 'n') + "/" + std::string(220, 'm') + "/x", 1);
    run.Run();
    test::ExpectGolden("dircomp/live" + std::to_string(width) + ".lst",
                       test::ReadFile(run.request.OutPath), run.folder);
    EXPECT_EQ(
        run.front_end.messages,
        (Texts{"旧ﾃﾞｨﾚｸﾄﾘ情報 展開中...", "旧ﾃﾞｨﾚｸﾄﾘ情報 展開中...\r\n新ﾃﾞｨﾚｸﾄﾘ情報 展開中...",
               "SORT処理中 ...", "SORT処理中 ...\r\nﾃﾞｨﾚｸﾄﾘｺﾝﾍﾟｱ 処理中..."}));

    const NativePath old_tree = run.request.OldPath;
    run.Snapshot(old_tree);
    run.request.JobKind = JobKind::kDirComp;
    run.request.OldPath = run.folder.At("s.ddf");
    run.request.OutPath = run.folder.At("d2.lst");
    run.SetAll("DCompOut0=0|DCompOut2=0");
    run.Run();
    test::ExpectGolden("dircomp/file" + std::to_string(width) + ".lst",
                       test::ReadFile(run.request.OutPath), run.folder);
  }
}

TEST(DirComp, ReadsWhatAFileMayHold) {
  struct Case {
    const char* name;
    std::string bytes;
    const char* result;   // counts of the side
    const char* trouble;  // nullptr: none
  };
  const std::string good = "\\lib\\,a.c,2024/03/09 09:05:03,40\r\n";
  const Case cases[] = {
      {"empty", "", "OLD=    0", nullptr},
      {"header only", "\\x\r\n", "OLD=    0", nullptr},
      {"padded hour", "\\x\r\n" + good, "OLD=    1", nullptr},
      {"date alone, no last line end", "\\x\n\\,a,2024/03/09,0", "OLD=    1", nullptr},
      {"commas", "\\x,y\r\n\\a,b\\,c,d,2024/3/9 1:02:03,5\r\n", "OLD=    1", nullptr},
      {"large size", "\\x\r\n\\,a,2024/03/09,99999999999\r\n", "OLD=    1", nullptr},
      {"trail byte that looks like a backslash", "\\x\r\n\\,\x95\x5C,2024/03/09,1\r\n", "OLD=    1",
       nullptr},
      {"no date", "\\x\r\n" + good + "\\,a,yesterday,1\r\n", "OLD=    1", ":3: "},
      {"no such day", "\\x\r\n\\,a,2023/02/29,1\r\n", "OLD=    0", ":2: "},
      {"year 0", "\\x\r\n\\,a,0000/02/28,1\r\n", "OLD=    0", ":2: "},
      {"no size", "\\x\r\n\\,a,2024/03/09,\r\n", "OLD=    0", ":2: "},
      {"no folder", "\\x\r\na,2024/03/09,1\r\n", "OLD=    0", ":2: "},
      {"noise", std::string("\0\xFF\n\n\x81", 5), "OLD=    0", ":2: "},
  };
  for (const Case& c : cases) {
    TreeRun run;
    run.request.OldPath = run.folder.Write("S.DDF", c.bytes);
    EXPECT_NE(run.Result().find(c.result), std::string::npos)
        << c.name << run.front_end.results.back();
    EXPECT_EQ(run.platform.troubles.size(), c.trouble == nullptr ? 0u : 1u) << c.name;
    if (c.trouble != nullptr && run.platform.troubles.size() == 1) {
      EXPECT_NE(run.platform.troubles[0].find(c.trouble), std::string::npos)
          << run.platform.troubles[0];
      EXPECT_EQ(run.services.end(), JobEnd::kTrouble);
    }
  }
}

TEST(DirComp, TellsWhatItCannotOpen) {
  struct Case {
    NativePath JobRequest::*path;
    const char* name;
    const char* message;
  };
  const Case cases[] = {
      {&JobRequest::OldPath, "none.ddf", "Old File Open Error: ファイルが見つかりません"},
      {&JobRequest::NewPath, "none.ddf", "New File Open Error: ファイルが見つかりません"},
      {&JobRequest::OutPath, "no/d.lst", "List Open Error: ファイルが見つかりません"},
      {&JobRequest::OutPath, "mine.ddf",
       "List Open Error: 入力ファイルと同じファイルには出力できません"},
  };
  for (const Case& c : cases) {
    TreeRun run;
    run.request.OldPath = run.folder.Write("mine.ddf", "\\x\r\n");
    run.request.*c.path = run.folder.At(c.name);
    EXPECT_EQ(run.Result(), "    UnMatch=    0 OLD=    0 NEW=    0 Rep=    0 Add=    0 Del=    0");
    EXPECT_EQ(run.platform.messages, (Texts{c.message}));
    EXPECT_EQ(run.services.end(), JobEnd::kTrouble);
    EXPECT_FALSE(FileExists(run.folder.At("d.lst")));
    EXPECT_EQ(test::ReadFile(run.folder.At("mine.ddf")), "\\x\r\n");
  }
}

TEST(DirComp, AStopAtAnyYieldLeavesNoSummary) {
  constexpr size_t kHeaderLines = 4;
  int stop = 0;
  size_t details = 0;
  for (bool stopped = true; stopped;) {
    TreeRun run;
    for (const char* name : {"old/a", "new/b", "old/c", "new/d", "old/e"}) run.File(name, 1);
    run.platform.stop_at_yield = ++stop;
    run.Run();
    stopped = run.job.StopRequested;
    EXPECT_EQ(run.services.end(), stopped ? JobEnd::kTrouble : JobEnd::kDifference);
    const Texts lines = ReadLines(run.request.OutPath);
    const bool summed_up = !lines.empty() && lines.back().find("一致") != std::string::npos;
    EXPECT_NE(summed_up, stopped) << stop;
    // Nothing is listed before the merge; then every further stop lets one more detail through.
    if (stopped && (lines.size() > kHeaderLines || details > 0)) {
      EXPECT_EQ(lines.size(), kHeaderLines + ++details) << stop;
    }
  }
  EXPECT_EQ(details, 5u);
}

TEST(ClipboardTexts, ListAndCompareTwoFolders) {
  TreeRun run;
  for (const char* name : {"old/b", "old/A", "old/sub/x", "new/b", "new/c"}) run.File(name, 1);
  EXPECT_EQ(FolderListText(run.request.OldPath), "A\r\nb");
  EXPECT_EQ(FolderListText(run.folder.At("none/")), "");
  EXPECT_EQ(FolderCompareText(run.request.OldPath, run.request.NewPath),
            "OLD : " + run.request.OldPath.bytes() + "\r\nNEW : " + run.request.NewPath.bytes() +
                "\r\n\r\n追加されたファイル\r\nc\r\n\r\n削除されたファイル\r\nA\r\n"
                "\r\n一致するファイル\r\nb\r\n");
}

}  // namespace
}  // namespace ledrix::modDComp
