#include "ui/desktop_actions.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QUrl>
#include <cstdlib>
#include <filesystem>

#include "ui/qt_text.h"
#include "ui/window_test.h"

namespace ledrix {
namespace {

using OpenResult = DesktopActions::OpenResult;

// A desktop of a temporary folder that opens addresses or refuses to, and a program that writes
// its argument into the file "told".
class TestDesktop : public DesktopActions {
 public:
  explicit TestDesktop(bool opens) : opens_(opens) {
    const std::string told = root.At("told").bytes();
    const NativePath program = root.Write("program", "#!/bin/sh\nprintf %s \"$1\" > " + told +
                                                         ".x\nmv " + told + ".x " + told + "\n");
    chmod(program.c_str(), 0755);
    setenv("XDG_CURRENT_DESKTOP", "Test", 1);
    Write("%f");
  }
  // The program's launcher, with a code for what it is to open.
  void Write(const std::string& code) const {
    root.Write("editor.desktop", "[Desktop Entry]\nType=Application\nExec=" +
                                     root.At("program").bytes() + " " + code + "\n");
  }
  void Associate(const std::string& type) const {
    root.Write("mimeapps.list", "[Default Applications]\n" + type + "=editor.desktop\n");
  }
  // What the program was given.
  std::string Told() {
    EXPECT_TRUE(test::WaitUntil([&] { return test::FileExists(root.At("told")); }));
    std::string told = test::ReadFile(root.At("told"));
    std::filesystem::remove(root.At("told").bytes());
    return told;
  }

  test::TempFolder root;
  std::vector<std::string> addresses;

 protected:
  bool OpenUrl(const QUrl& url) override {
    addresses.push_back(url.toEncoded().toStdString());
    return opens_;
  }
  AssociationFolders Associations() override { return {{}, {}, {NativePath(root.path() + "/")}}; }

 private:
  bool opens_;
};

TEST(DesktopActions, TellsWhetherAFilesKindHasAProgram) {
  struct Case {
    const char* name;
    const char* bytes;
    const char* associated;
    OpenResult result;
  };
  for (const Case& c : std::vector<Case>{
           {"a.txt", "x", "text/plain", OpenResult::kOpened},
           {"a.txt", "x", "image/png", OpenResult::kNoAssociation},
           {"A_COMP.TXT", "", "text/plain", OpenResult::kOpened},
           {"a.c", "int a;", "text/plain", OpenResult::kOpened},  // a kind of text
           {"a.c", "int a;", "text/x-csrc", OpenResult::kOpened},
           {"a.unknown", "text by its bytes\n", "text/plain", OpenResult::kOpened},
           {"a.unknown", "\x01\x02\x03\xFF", "text/plain", OpenResult::kNoAssociation},
           {"Ledrix.chm", "ITSF", "application/vnd.ms-htmlhelp", OpenResult::kOpened}}) {
    TestDesktop desktop(true);
    desktop.Associate(c.associated);
    EXPECT_EQ(desktop.OpenFile(desktop.root.Write(c.name, c.bytes)), c.result) << c.name;
    EXPECT_EQ(desktop.addresses.size(), c.result == OpenResult::kOpened ? 1u : 0u) << c.name;
  }
  TestDesktop desktop(true);
  desktop.Associate("text/plain");
  EXPECT_EQ(desktop.OpenFile(desktop.root.At("none.txt")), OpenResult::kFailed);
  EXPECT_EQ(desktop.OpenFile(NativePath(desktop.root.path())), OpenResult::kFailed);
  ASSERT_EQ(mkfifo(desktop.root.At("pipe.txt").c_str(), 0600), 0);
  EXPECT_EQ(desktop.OpenFile(desktop.root.At("pipe.txt")), OpenResult::kFailed);
}

TEST(DesktopActions, StartsTheProgramItselfWhereTheDesktopCannot) {
  for (const bool opens : {true, false}) {
    TestDesktop desktop(opens);
    desktop.Associate("text/plain");
    const NativePath named = desktop.root.Write("表 %20;$(x).txt", "x");
    EXPECT_EQ(desktop.OpenFile(named), OpenResult::kOpened);
    EXPECT_EQ(desktop.addresses.at(0),
              "file://" + desktop.root.path() + "/%E8%A1%A8%20%2520;$(x).txt");
    if (!opens) {
      EXPECT_EQ(desktop.Told(), named.bytes());
    }
    const NativePath bytes = desktop.root.Write("\xE8\xA1.txt", "x");
    EXPECT_EQ(desktop.OpenFile(bytes), OpenResult::kOpened);
    EXPECT_EQ(desktop.Told(), bytes.bytes());

    desktop.Associate("inode/directory");
    std::filesystem::create_directory(desktop.root.At("\xFF").bytes());
    EXPECT_TRUE(desktop.OpenFolder(desktop.root.At("\xFF/")));
    EXPECT_EQ(desktop.Told(), desktop.root.At("\xFF/").bytes());
    EXPECT_FALSE(desktop.OpenFolder(desktop.root.At("none/")));
    desktop.Associate("none");
    EXPECT_EQ(desktop.OpenFolder(desktop.root.At("")), opens);
    EXPECT_EQ(desktop.OpenAddress("https://ledrix.example/"), opens);
    EXPECT_EQ(desktop.addresses.back(), "https://ledrix.example/");
    desktop.Associate("x-scheme-handler/https");
    desktop.Write("%u");
    EXPECT_TRUE(desktop.OpenAddress("https://ledrix.example/?a=%20;$(x)"));
    if (!opens) {
      EXPECT_EQ(desktop.Told(), "https://ledrix.example/?a=%20;$(x)");
    }
  }
  TestDesktop desktop(false);
  desktop.Associate("text/plain");
  std::filesystem::remove(desktop.root.At("program").bytes());
  EXPECT_EQ(desktop.OpenFile(desktop.root.Write("a.txt", "x")), OpenResult::kFailed);
}

TEST(DesktopActions, AsksNoDesktopWhereThereIsNone) {
  TestDesktop desktop(true);
  desktop.Associate("text/plain");
  unsetenv("XDG_CURRENT_DESKTOP");
  const NativePath path = desktop.root.Write("a.txt", "x");
  EXPECT_EQ(desktop.OpenFile(path), OpenResult::kOpened);
  EXPECT_EQ(desktop.Told(), path.bytes());
  EXPECT_TRUE(desktop.addresses.empty());
}

TEST(DesktopActions, MovesToTheTrashAndNeverDeletes) {
  const test::TempFolder home;
  setenv("XDG_DATA_HOME", home.path().c_str(), 1);
  DesktopActions actions;
  EXPECT_TRUE(actions.MoveToTrash(home.Write("表.txt", "kept")));
  EXPECT_FALSE(test::FileExists(home.At("表.txt")));
  EXPECT_EQ(test::ReadFile(home.At("Trash/files/表.txt")), "kept");
  const NativePath bytes = home.Write("\xFF.txt", "x");
  EXPECT_FALSE(actions.MoveToTrash(bytes));
  EXPECT_TRUE(test::FileExists(bytes));
  EXPECT_FALSE(actions.MoveToTrash(home.At("none")));
  unsetenv("XDG_DATA_HOME");
}

TEST(DesktopActions, KnowsDocumentsAndTheClipboard) {
  DesktopActions actions;
  EXPECT_TRUE(actions.DocumentsFolder().bytes().ends_with("/"));
  actions.SetClipboardText("表\tx");
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "表\tx");
}

}  // namespace
}  // namespace ledrix
