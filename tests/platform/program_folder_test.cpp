#include "platform/program_folder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "support/test_files.h"

namespace ledrix {
namespace {

TEST(SendToFolder, IsTheUsersOrTheOneOfTheProgram) {
  const test::TempFolder home;
  setenv("XDG_DATA_HOME", home.path().c_str(), 1);
  setenv("LEDRIX_HOME", home.At("own").c_str(), 1);
  EXPECT_EQ(SendToFolder(SendToOwner::kUser).bytes(), home.path() + "/ledrix/SendTo/");
  EXPECT_EQ(SendToFolder(SendToOwner::kProgram).bytes(), home.path() + "/own/SendTo/");
  // The tests' own program lies one folder below the built ones.
  const std::filesystem::path shared(SharedFolder().bytes());
  EXPECT_EQ(shared.parent_path().parent_path().filename(), "share");
  std::filesystem::create_directories(shared / "SendTo");
  EXPECT_EQ(SendToFolder(SendToOwner::kProgram).bytes(), shared.string() + "SendTo/");
  std::filesystem::create_directories(home.At("own/SendTo").bytes());
  EXPECT_EQ(SendToFolder(SendToOwner::kProgram).bytes(), home.path() + "/own/SendTo/");
  std::filesystem::remove_all(shared.parent_path().parent_path());
  unsetenv("XDG_DATA_HOME");
  unsetenv("LEDRIX_HOME");
}

}  // namespace
}  // namespace ledrix
