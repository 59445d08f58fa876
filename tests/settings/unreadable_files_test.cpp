// Files that exist and cannot be read: settings, patterns and the run log.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "jobs/run_log.h"
#include "platform/files.h"
#include "platform/replacement.h"
#include "settings/ini_file.h"
#include "settings/pattern_slots.h"
#include "settings/settings_store.h"
#include "support/test_files.h"

namespace ledrix {
namespace {

using test::TempFolder;

struct Recorder : PlatformServices {
  void ReportTrouble(const std::string& line) override { lines.push_back(line); }
  std::vector<std::string> lines;
};

// Ways in which a file can be there and not be readable; a pipe without a writer would block.
struct Obstacle {
  const char* name;
  void (*make)(const char* path);
};
const Obstacle kObstacles[] = {
    {"folder", [](const char* path) { mkdir(path, 0777); }},
    {"pipe", [](const char* path) { mkfifo(path, 0666); }},
    {"loop", [](const char* path) { EXPECT_EQ(symlink(path, path), 0); }},
    {"locked", [](const char* path) { close(creat(path, 0)); }},
};

TEST(UnreadableFiles, AreNeitherMissingNorWrittenOver) {
  for (const Obstacle& obstacle : kObstacles) {
    if (std::string_view(obstacle.name) == "locked" && geteuid() == 0) continue;
    SCOPED_TRACE(obstacle.name);
    const TempFolder folder;
    const NativePath paths[] = {folder.At("settings.ini"), folder.At("LedrixPtn1.ini"),
                                folder.At("Ledrixr.Log")};
    struct stat before[3]{};
    for (int i = 0; i < 3; ++i) {
      obstacle.make(paths[i].c_str());
      lstat(paths[i].c_str(), &before[i]);
    }
    SettingsStore store(paths[0]);
    EXPECT_FALSE(store.Load().ok());
    EXPECT_FALSE(store.unread().ok());
    EXPECT_FALSE(store.Save().ok());

    PatternSlots patterns(NativePath(folder.path() + "/"));
    patterns[0].name = "before";
    EXPECT_FALSE(patterns.LoadPattern(0).ok());
    EXPECT_FALSE(patterns.SavePattern(0, {"after", {}}).ok());
    EXPECT_EQ(patterns[0].name, "before");
    clsIniFile file;
    file.pFileName(paths[1]);
    EXPECT_FALSE(file.mSetString("Pattern", "Name", "x"));

    Recorder platform;
    RunLog log(NativePath(folder.path() + "/"), platform);
    log.WriteRunRecord(folder.At("x"));
    log.CompactHistory();
    log.SaveHistory({});
    EXPECT_EQ(platform.lines.size(), 1u);
    for (int i = 0; i < 3; ++i) {
      struct stat after {};
      EXPECT_EQ(lstat(paths[i].c_str(), &after), 0);
      EXPECT_EQ(after.st_ino, before[i].st_ino);
    }
  }
}

TEST(UnreadableFiles, AMissingFileIsNone) {
  const TempFolder folder;
  SettingsStore store(folder.At("none/settings.ini"));
  EXPECT_FALSE(store.Load().ok());
  EXPECT_TRUE(store.unread().ok() && store.Save().ok());
  Recorder platform;
  RunLog(NativePath(folder.path() + "/"), platform).CompactHistory();
  EXPECT_TRUE(platform.lines.empty());
  EXPECT_EQ(test::ReadFile(folder.At("Ledrixr.Log")), "");
}

TEST(ReplaceFile, KeepsModeAndOwner) {
  const TempFolder folder;
  for (const mode_t mode : {0600u, 0644u, 0666u, 0640u}) {
    const NativePath path = folder.Write("f", "old");
    chmod(path.c_str(), mode);
    if (geteuid() == 0) {
      ASSERT_EQ(chown(path.c_str(), 65534, 65533), 0);
    }
    struct stat before {
    }, after{};
    stat(path.c_str(), &before);
    ASSERT_TRUE(ReplaceFile(path, "new").ok());
    stat(path.c_str(), &after);
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
    EXPECT_EQ(test::ReadFile(path), "new");
  }
}

}  // namespace
}  // namespace ledrix
