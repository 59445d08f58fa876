#include "desktop/associations.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "support/test_files.h"

namespace ledrix {
namespace {

// The folders of a desktop: its user's and the system's lists and launchers.
struct Desktop {
  test::TempFolder root;
  AssociationFolders folders;

  Desktop() {
    for (const char* name : {"config/", "apps/", "apps/sub/", "system/"}) {
      std::filesystem::create_directory(root.At(name).bytes());
    }
    folders = {{"kde"}, {root.At("config/")}, {root.At("apps/"), root.At("system/")}};
    for (const char* name :
         {"system/editor", "system/viewer", "system/masked", "apps/own", "apps/sub/deep-er"}) {
      root.Write(std::string(name) + ".desktop", "[Desktop Entry]\nType=Application\nExec=prog\n");
    }
    root.Write("apps/masked.desktop",
               "[Desktop Entry]\nType=Application\nExec=prog\nHidden=true\n");
    root.Write("apps/broken.desktop", "[Desktop Entry]\nType=Application\n");
  }
  // The name of the program found, or "none".
  std::string Find(const std::vector<std::string>& types) const {
    const auto launcher = FindAssociation(folders, types);
    return launcher ? launcher->name : "none";
  }
};

TEST(Associations, AreFoundInTheOrderOfTheDesktop) {
  for (const auto& row : test::ReadTable("associations.tsv")) {
    const Desktop desktop;
    for (size_t i = 2; i + 1 < row.size(); i += 2) desktop.root.Write(row[i], row[i + 1]);
    EXPECT_EQ(desktop.Find({"t/a", "t/p"}), row[1]) << row[0];
  }
}

TEST(Associations, AreLookedForWhereTheDesktopSays) {
  setenv("XDG_CURRENT_DESKTOP", "KDE:x/y", 1);
  setenv("XDG_CONFIG_HOME", "/ch", 1);
  setenv("XDG_CONFIG_DIRS", "/c1:relative:/c2/", 1);
  setenv("XDG_DATA_HOME", "/dh", 1);
  setenv("XDG_DATA_DIRS", "/d1", 1);
  const AssociationFolders folders = DesktopAssociationFolders();
  for (const char* name : {"XDG_CURRENT_DESKTOP", "XDG_CONFIG_HOME", "XDG_CONFIG_DIRS",
                           "XDG_DATA_HOME", "XDG_DATA_DIRS"}) {
    unsetenv(name);
  }
  EXPECT_EQ(folders.desktops, std::vector<std::string>{"kde"});
  const auto paths = [](const std::vector<std::string>& texts) {
    return std::vector<NativePath>(texts.begin(), texts.end());
  };
  EXPECT_EQ(folders.configurations, paths({"/ch/", "/c1/", "/c2/"}));
  EXPECT_EQ(folders.applications, paths({"/dh/applications/", "/d1/applications/"}));
  EXPECT_EQ(DesktopAssociationFolders().applications.back().bytes(), "/usr/share/applications/");
}

}  // namespace
}  // namespace ledrix
