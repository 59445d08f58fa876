#include "desktop/launcher.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "support/test_files.h"

namespace ledrix {
namespace {

using Texts = std::vector<std::string>;

std::string LauncherText(const std::string& exec, const std::string& more = "") {
  return "[Desktop Entry]\nType=Application\nName=N\nExec=" + exec + "\n" + more;
}

// The arguments joined by "|", or "broken".
std::string Arguments(const test::TempFolder& folder, const std::string& exec,
                      const std::string& more = "", const std::string& file = "/d/a b") {
  const auto launcher = ReadLauncher(folder.Write("x.desktop", LauncherText(exec, more)));
  if (!launcher) return "broken";
  std::string joined;
  for (const std::string& argument : LauncherArguments(*launcher, NativePath(file))) {
    joined += (joined.empty() ? "" : "|") + argument;
  }
  return joined;
}

TEST(Launcher, CutsExecIntoArguments) {
  const test::TempFolder folder;
  for (const auto& row : test::ReadTable("launcher_words.tsv")) {
    EXPECT_EQ(Arguments(folder, row[0], row[2]), row[1]) << row[0];
  }
  EXPECT_EQ(Arguments(folder, "prog %U %%f %c|%k"),
            "prog|file:///d/a%20b|%f|N|" + folder.At("x.desktop").bytes());
  EXPECT_EQ(Arguments(folder, "prog %f %u", "", "/\xFF,日$(x)"),
            "prog|/\xFF,日$(x)|file:///%FF%2C%E6%97%A5%24%28x%29");
}

TEST(Launcher, RefusesBrokenFiles) {
  const test::TempFolder folder;
  std::filesystem::create_directory(folder.At("dir.desktop").bytes());
  ASSERT_EQ(mkfifo(folder.At("pipe.desktop").c_str(), 0600), 0);
  EXPECT_FALSE(ReadLauncher(folder.At("none.desktop")));
  EXPECT_FALSE(ReadLauncher(folder.At("dir.desktop")));
  EXPECT_FALSE(ReadLauncher(folder.At("pipe.desktop")));
  EXPECT_FALSE(ReadLauncher(NativePath("/dev/zero")));
  std::string largest = LauncherText("prog") + "#";
  largest.resize(65536, 'x');
  EXPECT_TRUE(ReadLauncher(folder.Write("x.desktop", largest)));
  EXPECT_FALSE(ReadLauncher(folder.Write("x.desktop", largest + "x")));
  for (const auto& row : test::ReadTable("launcher_files.tsv")) {
    EXPECT_EQ(ReadLauncher(folder.Write("x.desktop", row[0])).has_value(), row[1] == "yes")
        << row[0];
  }
}

Texts Names(const std::vector<Launcher>& launchers) {
  Texts names;
  for (const Launcher& launcher : launchers) names.push_back(launcher.name);
  return names;
}

TEST(Launcher, ListsWhatOthersCannotWriteTo) {
  umask(022);
  const test::TempFolder folder;
  const std::string good = LauncherText("cat");
  for (const char* name :
       {"b", "B", "日本", "a 3.5 b", "5ｲﾝﾁFD", "shared", "others", "alien", "to"}) {
    folder.Write(std::string(name) + ".desktop", good);
  }
  folder.Write("text.txt", good);
  folder.Write(".desktop", good);
  folder.Write("hidden.desktop", good + "Hidden=true\n");
  folder.Write("no.desktop", good + "NoDisplay=true\n");
  folder.Write("broken.desktop", "noise");
  folder.Write("gone.desktop", LauncherText("/no/such/program %f"));
  chmod(folder.At("shared.desktop").c_str(), 0664);
  chmod(folder.At("others.desktop").c_str(), 0646);
  std::filesystem::create_directory(folder.At("open").bytes());
  folder.Write("open/x.desktop", good);
  chmod(folder.At("open").c_str(), 0777);
  symlink("open/x.desktop", folder.At("link1.desktop").c_str());
  symlink("b.desktop", folder.At("link2.desktop").c_str());
  symlink("loop.desktop", folder.At("loop.desktop").c_str());
  Texts expected{"B", "alien", "b", "link2", "to", "日本"};
  if (geteuid() == 0) {
    ASSERT_EQ(chown(folder.At("alien.desktop").c_str(), 12345, 12345), 0);
    expected.erase(expected.begin() + 1);
  }
  const NativePath path(folder.path() + "/");
  EXPECT_EQ(Names(ListLaunchers(path)), expected);
  chmod(folder.path().c_str(), 0770);
  EXPECT_EQ(Names(ListLaunchers(path)), Texts());
  EXPECT_EQ(Names(ListLaunchers(folder.At("none/"))), Texts());
}

TEST(Launcher, ComesWithTheProgram) {
  const NativePath folder(LEDRIX_SOURCE_FOLDER "/packaging/SendTo/");
  int count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder.bytes())) {
    std::string text = test::ReadFile(NativePath(entry.path().string()));
    text.erase(text.find("TryExec="), text.find("\nExec=") - text.find("TryExec=") + 1);
    const test::TempFolder copy;
    const auto launcher = ReadLauncher(copy.Write("x.desktop", text));
    ASSERT_TRUE(launcher) << entry.path();
    EXPECT_EQ(launcher->title, entry.path().stem().string());
    // The file stands where a code is, not behind all.
    EXPECT_EQ(launcher->words.size(), LauncherArguments(*launcher, NativePath("/x")).size());
    ++count;
  }
  EXPECT_EQ(count, 3);
}

// What a started program writes into a file in the end.
std::string Written(const NativePath& path) {
  EXPECT_TRUE(test::WaitForFile(path));
  return test::ReadFile(path);
}

// A program that writes its folder and arguments, each in brackets, into the file "told".
NativePath TellingProgram(const test::TempFolder& folder, const char* name) {
  const std::string told = folder.At("told").bytes();
  NativePath path = folder.Write(name, "#!/bin/sh\n{ printf '[%s]' \"$PWD\" \"$@\"; } > " + told +
                                           ".x\nmv " + told + ".x " + told + "\n");
  chmod(path.c_str(), 0755);
  return path;
}

TEST(Launcher, StartsItsProgramWithTheBytesOfTheFile) {
  const test::TempFolder folder;
  const NativePath program = TellingProgram(folder, "pro gram");
  const auto launcher = ReadLauncher(
      folder.Write("x.desktop", LauncherText("\"" + program.bytes() + "\" -x %f", "Path=/usr\n")));
  ASSERT_TRUE(launcher);
  EXPECT_TRUE(StartWithFile(*launcher, NativePath("/a\xFF b;$(x)\n'\"")).ok());
  EXPECT_EQ(Written(folder.At("told")), "[/usr][-x][/a\xFF b;$(x)\n'\"]");
}

TEST(Launcher, StartsInATerminalAndTellsOfFailures) {
  const test::TempFolder folder;
  const std::string path = std::getenv("PATH");
  const auto read = [&](const std::string& exec, const std::string& more) {
    return *ReadLauncher(folder.Write("x.desktop", LauncherText(exec, more)));
  };
  const NativePath file("/f");
  TellingProgram(folder, "x-terminal-emulator");
  setenv("PATH", (folder.path() + ":/bin").c_str(), 1);
  EXPECT_TRUE(StartWithFile(read("sh a", "Terminal=true\nPath=/usr\n"), file).ok());
  EXPECT_EQ(Written(folder.At("told")), "[/usr][-e][sh][a][/f]");
  folder.Write("data", "no program");
  EXPECT_FALSE(StartWithFile(read("no-such-program", ""), file).ok());
  EXPECT_FALSE(StartWithFile(read("no-such-program", "Terminal=true\n"), file).ok());
  EXPECT_FALSE(StartWithFile(read(folder.At("data").bytes(), ""), file).ok());
  EXPECT_FALSE(StartWithFile(read("sh", "Path=/no/such/folder\n"), file).ok());
  setenv("PATH", path.c_str(), 1);
}

}  // namespace
}  // namespace ledrix
