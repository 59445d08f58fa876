#include "platform/files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/folders.h"
#include "platform/output_file.h"
#include "platform/replacement.h"
#include "support/test_files.h"

namespace ledrix {
namespace {

using test::FileExists;
using test::TempFolder;

TEST(OutputFile, MayWaitForItsFirstBytes) {
  const TempFolder folder;
  const auto make = [&](const char* name) {
    return std::move(OutputFile::CreateWhenNeeded(folder.At(name)).value());
  };
  OutputFile dropped = make("dropped");
  dropped.Write("text");
  EXPECT_FALSE(FileExists(folder.At("dropped")));
  folder.Write("dropped", "made by somebody else");
  dropped.Discard();
  EXPECT_TRUE(dropped.Close().ok());
  EXPECT_EQ(test::ReadFile(folder.At("dropped")), "made by somebody else");

  OutputFile kept = make("kept");
  EXPECT_TRUE(kept.Close().ok());
  EXPECT_EQ(test::ReadFile(folder.At("kept")), "");

  const std::string text(200000, 'x');
  OutputFile large = make("large");
  large.Write(text);
  EXPECT_FALSE(FileExists(folder.At("large")));
  EXPECT_TRUE(large.Close().ok());
  EXPECT_TRUE(test::ReadFile(folder.At("large")) == text);

  OutputFile replaced = make("large");
  EXPECT_EQ(test::ReadFile(folder.At("large")), "");
  replaced.Discard();
  EXPECT_FALSE(FileExists(folder.At("large")));

  EXPECT_FALSE(OutputFile::CreateWhenNeeded(folder.At("none/x")).ok());
}

// What stood at the path gives way only where nobody sees a difference but the content.
TEST(OutputFile, TakesThePlaceOfWhatStood) {
  const TempFolder folder;
  folder.Write("shared", "earlier");
  ASSERT_EQ(link(folder.At("shared").c_str(), folder.At("second").c_str()), 0);
  ASSERT_EQ(symlink("behind", folder.At("link").c_str()), 0);
  folder.Write("own", "earlier");
  chmod(folder.At("own").c_str(), 0604);
  for (const auto& [name, seen_under] :
       {std::pair("own", "own"), std::pair("shared", "second"), std::pair("link", "behind")}) {
    Result<OutputFile> file = OutputFile::Create(folder.At(name));
    file.value().Write(name);
    EXPECT_EQ(FileExists(folder.At(name)), std::string(name) != "own") << name;
    ASSERT_TRUE(file.value().Close().ok());
    EXPECT_EQ(test::ReadFile(folder.At(seen_under)), name);
  }
  struct stat status {};
  ASSERT_EQ(stat(folder.At("own").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0604u);
  // What another program has put there meanwhile is replaced, but for what is no file.
  Result<OutputFile> file = OutputFile::Create(folder.At("new"));
  ASSERT_EQ(mkdir(folder.At("new").c_str(), 0777), 0);
  EXPECT_FALSE(file.value().Close().ok());
}

TEST(Replacement, OldLeftoversGo) {
  const TempFolder folder;
  const time_t now = time(nullptr);
  const auto make = [&](const std::string& name, time_t age) {
    test::SetModified(folder.Write(name, ""), now - age);
  };
  constexpr time_t kDay = time_t{24} * 60 * 60;
  for (const char* name :
       {"f.ini.Ab3dEf", "f.ini.Ab3dE", "f.ini.Ab3dEfg", "f.ini.a-3dEf", "g.ini.Ab3dEf", "f.ini"}) {
    make(name, 2 * kDay);
  }
  make("f.ini.young1", kDay - 60);
  RemoveOldReplacements(folder.At("f.ini"));
  std::vector<std::string> names;
  const auto left = ReadFolder(NativePath(folder.path()));
  for (const FolderEntry& entry : left.value()) names.push_back(entry.name);
  EXPECT_EQ(names, (std::vector<std::string>{"f.ini", "f.ini.Ab3dE", "f.ini.Ab3dEfg",
                                             "f.ini.a-3dEf", "f.ini.young1", "g.ini.Ab3dEf"}));
}

TEST(PathExists, TellsFilesFromFolders) {
  const TempFolder folder;
  const NativePath file = folder.Write("file", "x");
  EXPECT_TRUE(PathExists(file));
  EXPECT_TRUE(PathExists(NativePath(" " + file.bytes() + "  ")));
  EXPECT_TRUE(PathExists(NativePath(folder.path() + "/")));
  EXPECT_FALSE(PathExists(NativePath(folder.path())));
  EXPECT_FALSE(PathExists(NativePath(file.bytes() + "/")));
  EXPECT_FALSE(PathExists(folder.At("missing")));
  EXPECT_FALSE(PathExists(NativePath("   ")));
}

}  // namespace
}  // namespace ledrix
