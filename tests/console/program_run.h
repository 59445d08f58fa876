// A folder with inputs for the built programs, which run in it with settings and logs of their own.
#pragma once

#include <algorithm>
#include <filesystem>
#include <set>

#include "support/program.h"
#include "support/test_files.h"

namespace ledrix::test {

using Texts = std::vector<std::string>;

// The files old.txt and new.txt differ; old/ and new/ hold a.CBL, which differs, and b.CBL, which
// does not and is B.cbl on the other side.
struct ProgramRun {
  TempFolder folder;

  ProgramRun() {
    for (const char* name : {"old", "new", "old/sub", "home", "config"}) {
      std::filesystem::create_directory(At(name));
    }
    File("old.txt", "a\nb\n");
    File("new.txt", "a\nc\nd\n", 60);
    File("old/a.CBL", "1\r\n2\r\n");
    File("new/a.CBL", "1\r\n3\r\n", 60);
    File("old/b.CBL", "same\r\n");
    File("new/B.cbl", "same\r\n", 60);
  }
  std::string At(const std::string& name) const { return folder.At(name).bytes(); }
  std::string Read(const std::string& name) const { return ReadFile(folder.At(name)); }
  void File(const std::string& name, const std::string& bytes, time_t later = 0) const {
    SetModified(folder.Write(name, bytes), kTestTime + later);
  }
  // What has been made below the folder since the last call.
  Texts Made() {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path())) {
      if (!entry.is_directory())
        names.insert(entry.path().string().substr(folder.path().size() + 1));
    }
    Texts made;
    std::set_difference(names.begin(), names.end(), known_.begin(), known_.end(),
                        std::back_inserter(made));
    known_ = std::move(names);
    return made;
  }
  bool InputsAreUntouched() const {
    return Read("old.txt") == "a\nb\n" && Read("new.txt") == "a\nc\nd\n";
  }
  ProgramResult Run(const char* program, Texts arguments, Texts environment = {}) const {
    arguments.insert(arguments.begin(), program);
    environment.push_back("LEDRIX_HOME=" + At("home"));
    environment.push_back("XDG_CONFIG_HOME=" + At("config"));
    return RunProgram(arguments, {environment, folder.path()});
  }

 private:
  std::set<std::string> known_;
};

}  // namespace ledrix::test
