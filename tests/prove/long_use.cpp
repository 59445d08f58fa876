// Runs jobs of all kinds in one process and tells what it holds before and after them.
//
// Usage: long_use JOBS. Prints "heap-bytes descriptors files" when every kind has run some times,
// and once more behind JOBS further jobs.
#include <malloc.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "settings/pattern_slots.h"
#include "settings/settings_store.h"
#include "support/test_run.h"

namespace ledrix {
namespace {

size_t CountEntries(const std::string& folder) {
  size_t count = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    count += entry.is_directory() ? 0 : 1;
  }
  return count;
}

class LongUse {
 public:
  LongUse() {
    for (const char* side : {"old", "new"}) {
      const std::string name = side;
      std::filesystem::create_directories(folder_.At(name + "/sub").bytes());
      folder_.Write(name + "/a.txt", test::Repeat("same\r\n", 40) + name + "\r\n");
      folder_.Write(name + "/b.txt", "\xC6\xFC\xCB\xDC\xB8\xEC\xA4\xCE\xCA\xB8\r\n" + name);
      folder_.Write(name + "/c.txt", "+ZeVnLIqe-\r\n");
      folder_.Write(name + "/sub/d.txt", name);
    }
  }

  // One job; every kind has its turn within kKinds of them.
  static constexpr int kKinds = 12;
  void Do(int number) {
    switch (number % kKinds) {
      case 0:
        return Compare("old/a.txt", "new/a.txt", {});
      case 1:
        return Compare("old/b.txt", "new/b.txt", "FULLAUTO(遅め)");
      case 2:
        return Compare("old/c.txt", "new/b.txt", "UTF-16");
      case 3:
        return Compare("old/none.txt", "new/a.txt", {});
      case 4:
        return Compare("old/a.txt", "new/sub", {});
      case 5:
        return CompareFolders(0);
      case 6:
        return CompareFolders(3);
      case 7:
        return Other(JobKind::kStepCnt, "old/a.txt", "out.stp");
      case 8:
        return Other(JobKind::kStepCsv, "old/", "out.csv");
      case 9:
        return Other(JobKind::kDirEdit, "old/", "out.ddf");
      case 10:
        return Other(JobKind::kDirComp, "old/", "out.dir");
      default:
        return Save();
    }
  }

  void Print() const {
    std::printf("%zu %zu %zu\n", mallinfo2().uordblks, CountEntries("/proc/self/fd"),
                CountEntries(folder_.path()));
  }

 private:
  void Start(test::TestRun& run, const char* old_path, const char* new_path) {
    run.request.OldPath = folder_.At(old_path);
    run.request.NewPath = folder_.At(new_path);
    run.log = &log_;
    run.Set("OptNoCngNoOut",
            "0");  // files written in one tick of the clock are compared all the same
    run.sides[Side::kOld] = {
        folder_.At("old/"), "全て (*.*)", {{{"a.txt", true}, {"c.txt", true}}}};
    run.sides[Side::kNew] = {
        folder_.At("new/"), "全て (*.*)", {{{"a.txt", true}, {"c.txt", true}}}};
  }

  void Compare(const char* old_path, const char* new_path, const char* charset) {
    test::TestRun run;
    Start(run, old_path, new_path);
    if (charset != nullptr) run.Set("CharsetCode", charset);
    run.request.FileCount = 1;
    run.job.outputs.OptSbnList = run.job.outputs.OptMrgSrc = run.job.outputs.OptCsvList = true;
    run.Run();
  }

  void CompareFolders(int stop_at_yield) {
    test::TestRun run;
    Start(run, "old/", "new/");
    run.request.FileCount = 2;
    run.request.IsMultiple = true;
    run.job.outputs.OptCsvList = true;
    run.platform.stop_at_yield = stop_at_yield;
    run.Run();
  }

  void Other(JobKind kind, const char* old_path, const char* output) {
    test::TestRun run;
    Start(run, old_path, "new/");
    run.request.JobKind = kind;
    run.request.OutPath = folder_.At(output);
    run.Run();
  }

  void Save() {
    SettingsStore store(folder_.At("settings.ini"));
    OptionRecord options;
    store.Load().Ignore();
    LoadOptions(store, options);
    SaveOptions(options, {}, store);
    store.Save().Ignore();
    PatternSlots slots(folder_.At(""));
    slots.LoadPattern(0).Ignore();
    slots.SavePattern(0, {"name", options}).Ignore();
  }

  const test::TempFolder folder_;
  JobRecord log_job_;
  test::RecordingPlatform log_platform_{log_job_};
  RunLog log_{folder_.At(""), log_platform_};
};

}  // namespace
}  // namespace ledrix

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  ledrix::LongUse use;
  constexpr int kWarmUp = 2 * ledrix::LongUse::kKinds;
  for (int i = 0; i < kWarmUp; ++i) use.Do(i);
  use.Print();
  for (int i = std::atoi(argv[1]); i > 0; --i) use.Do(i);
  use.Print();
  return 0;
}
