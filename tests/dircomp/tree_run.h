// Directory jobs on trees that a test makes.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "support/test_run.h"

namespace ledrix::test {

using Texts = std::vector<std::string>;

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
    sides[Side::kOld].filter_entry = "全て (*.*)";
  }
  // Makes a file of so many bytes, last written so many seconds after the test's time.
  void File(const std::string& name, size_t size, time_t later = 0, long nanoseconds = 0) {
    const NativePath path = folder.At(name);
    std::filesystem::create_directories(DirOf(path).bytes());
    folder.Write(name, std::string(size, 'x'));
    SetModified(path, kTestTime + later, nanoseconds);
  }
  std::string Result() {
    Run();
    return front_end.results.back();
  }
  // The snapshot of a tree as lines.
  Texts Snapshot(const NativePath& root) {
    request.JobKind = JobKind::kDirEdit;
    request.OldPath = root;
    request.OutPath = folder.At("s.ddf");
    Run();
    return ReadLines(request.OutPath);
  }
};

}  // namespace ledrix::test
