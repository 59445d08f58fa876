#include "dircomp/dir_compare.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <random>

#include "dircomp/dir_info_file.h"
#include "dircomp/qsort.h"
#include "dircomp/tree_run.h"
#include "text/code_page_932.h"
#include "text/utf8.h"

namespace ledrix::modDComp {
namespace {

using test::FileExists;
using test::ReadLines;
using test::Texts;
using test::TreeRun;

constexpr time_t kHour = 3600;

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
  std::vector<QSort::SortItem> items(1'000'000, {"same", 0});
  items[0].key = "";
  items.back().key = "a";
  QSort::Sort(items);
  EXPECT_TRUE(std::is_sorted(items.begin(), items.end(),
                             [](const auto& a, const auto& b) { return a.key < b.key; }));
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

TEST(DirComp, ClassifiesEachPair) {
  for (const auto& row : test::ReadTable("file_times.tsv")) {
    TreeRun run;
    run.SetAll(row[0]);
    const time_t base = std::stol(row[4]);
    run.File("old/f", 5, base);
    run.File("new/f", 5 + std::stoul(row[1]), base + std::stol(row[2]), std::stol(row[3]));
    const bool matching = row[5] == "yes";
    EXPECT_EQ(run.Result(),
              matching ? "    UnMatch=    0 OLD=    1 NEW=    1 Rep=    0 Add=    0 Del=    0"
                       : "    UnMatch=    1 OLD=    1 NEW=    1 Rep=    1 Add=    0 Del=    0")
        << row[0] << " " << row[2];
    EXPECT_EQ(run.services.end(), matching ? JobEnd::kNoDifference : JobEnd::kDifference);
  }
}

TEST(DirComp, PairsByTheRangeAndTheNameRules) {
  for (const auto& row : test::ReadTable("paired_names.tsv")) {
    TreeRun run;
    run.request.CompareRange = CompareRange(std::stoi(row[3]));
    run.SetAll(row[4]);
    run.sides[Side::kOld].filter_entry = row[5];
    run.File("old/" + row[0], 1);
    run.File("new/" + row[1], 1);
    run.Run();
    EXPECT_EQ(ReadLines(run.request.OutPath).back().find("一致=    1") != std::string::npos,
              row[2] == "yes")
        << row[0] << " " << row[1] << " " << row[4];
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
  for (const auto& row : test::ReadTable("dir_info_files.tsv")) {
    TreeRun run;
    run.request.OldPath = run.folder.Write("S.DDF", row[0]);
    EXPECT_NE(run.Result().find(row[1]), std::string::npos)
        << row[0] << run.front_end.results.back();
    const bool is_read = row[2].empty();
    ASSERT_EQ(run.platform.troubles.size(), is_read ? 0u : 1u) << row[0];
    EXPECT_EQ(FileExists(run.request.OutPath), is_read) << row[0];
    if (is_read) {
      for (const std::string& line : ReadLines(run.request.OutPath)) {
        EXPECT_EQ(line.find('\r'), std::string::npos) << line;
      }
      continue;
    }
    EXPECT_NE(run.platform.troubles[0].find("S.DDF" + row[2]), std::string::npos) << row[0];
    EXPECT_EQ(run.services.end(), JobEnd::kTrouble);
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
    EXPECT_EQ(run.Result(), "    エラー");
    EXPECT_EQ(run.platform.messages, (Texts{c.message}));
    EXPECT_EQ(run.services.end(), JobEnd::kTrouble);
    EXPECT_FALSE(FileExists(run.folder.At("d.lst")));
    EXPECT_EQ(test::ReadFile(run.folder.At("mine.ddf")), "\\x\r\n");
  }
}

// A stop while the sides are read leaves no listing, a later one a listing without summary.
TEST(DirComp, AStopAtAnyYieldLeavesNoSummary) {
  constexpr size_t kHeaderLines = 4;
  int stop = 0;
  size_t details = 0;
  for (bool stopped = true; stopped;) {
    TreeRun run;
    for (const char* name : {"old/a", "new/b", "old/c", "new/d", "old/e"}) run.File(name, 1);
    run.folder.Write("d.lst", "of an earlier run");
    run.platform.stop_at_yield = ++stop;
    const std::string result = run.Result();
    stopped = run.job.StopRequested;
    EXPECT_EQ(run.services.end(), stopped ? JobEnd::kTrouble : JobEnd::kDifference);
    const bool has_result = result.find("UnMatch=") != std::string::npos;
    EXPECT_EQ(FileExists(run.request.OutPath), has_result);
    if (!has_result) {
      EXPECT_EQ(result, "    中断");
      EXPECT_EQ(details, 0u);
      continue;
    }
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
