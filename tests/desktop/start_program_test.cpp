#include "desktop/start_program.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "support/test_files.h"
#include "text/ascii.h"

namespace ledrix {
namespace {

TEST(FindProgram, LooksInTheWholePathsOfThePath) {
  const test::TempFolder folder;
  const std::string path = std::getenv("PATH");
  const std::filesystem::path here = std::filesystem::current_path();
  const NativePath program = folder.Write("program", "#!/bin/sh\n");
  chmod(program.c_str(), 0755);
  std::filesystem::create_directory(folder.At("folder").bytes());
  folder.Write("data", "no program");
  std::filesystem::current_path(folder.path());
  setenv("PATH", (":/none:" + folder.path()).c_str(), 1);
  EXPECT_EQ(FindProgram("program").bytes(), program.bytes());
  EXPECT_EQ(FindProgram("./program").bytes(), folder.path() + "/./program");
  for (const char* name : {"", "folder", "data", "none", "/none/program"}) {
    EXPECT_TRUE(FindProgram(name).empty()) << name;
  }
  setenv("PATH", ".::", 1);
  EXPECT_TRUE(FindProgram("program").empty());
  std::filesystem::current_path(here);
  setenv("PATH", path.c_str(), 1);
}

TEST(StartProgram, LeavesThePlainStateOfAProgram) {
  const test::TempFolder folder;
  const int input = dup(STDIN_FILENO);
  close(STDIN_FILENO);
  ASSERT_EQ(open(folder.Write("input", "x").c_str(), O_RDONLY), STDIN_FILENO);
  sigset_t blocked;
  sigemptyset(&blocked);
  sigaddset(&blocked, SIGUSR1);
  sigprocmask(SIG_BLOCK, &blocked, nullptr);
  for (const int number : {SIGPIPE, SIGXFSZ}) signal(number, SIG_IGN);
  // What the system tells the program of itself.
  EXPECT_TRUE(StartProgram({"cp", "-P", "/proc/self/stat", "/proc/self/status", "/proc/self/fd/0",
                            folder.path()},
                           {})
                  .ok());
  for (const int number : {SIGPIPE, SIGXFSZ}) signal(number, SIG_DFL);
  sigprocmask(SIG_UNBLOCK, &blocked, nullptr);
  dup2(input, STDIN_FILENO);
  close(input);

  EXPECT_TRUE(test::WaitForFile(folder.At("0")));
  EXPECT_EQ(std::filesystem::read_symlink(folder.At("0").bytes()), "/dev/null");
  EXPECT_NE(std::stoi(SplitAt(test::ReadFile(folder.At("stat")), ' ').at(5)), getsid(0));
  const std::string status = test::ReadFile(folder.At("status"));
  const auto mask = [&](const char* name) {
    return std::stoull(status.substr(status.find(name) + std::strlen(name)), nullptr, 16);
  };
  EXPECT_EQ(mask("SigBlk:"), 0u);
  for (const int number : {SIGPIPE, SIGXFSZ}) EXPECT_EQ(mask("SigIgn:") >> (number - 1) & 1, 0u);
}

}  // namespace
}  // namespace ledrix
