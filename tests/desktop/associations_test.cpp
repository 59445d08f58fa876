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
  struct Case {
    const char* what;
    std::vector<std::pair<const char*, const char*>> files;
    const char* found;
  };
  for (const Case& c : std::vector<Case>{
           {"nothing", {}, "none"},
           {"noise", {{"config/mimeapps.list", "\x80[[=;\n\n=]"}}, "none"},
           {"cache",
            {{"system/mimeinfo.cache", "[MIME Cache]\nt/a=gone.desktop;viewer.desktop;\n"}},
            "viewer"},
           {"parent", {{"system/mimeinfo.cache", "[MIME Cache]\nt/p=viewer.desktop;\n"}}, "viewer"},
           {"own type before a parent's default",
            {{"system/mimeinfo.cache", "[MIME Cache]\nt/a=viewer.desktop;\n"},
             {"config/mimeapps.list", "[Default Applications]\nt/p=editor.desktop\n"}},
            "viewer"},
           {"default",
            {{"system/mimeinfo.cache", "[MIME Cache]\nt/a=viewer.desktop;\n"},
             {"system/mimeapps.list", "[Default Applications]\nt/a=editor.desktop;\n"}},
            "editor"},
           {"user's default",
            {{"config/mimeapps.list", "[Default Applications]\nt/a=own.desktop\n"},
             {"system/mimeapps.list", "[Default Applications]\nt/a=editor.desktop;\n"}},
            "own"},
           {"the desktop's own list first",
            {{"config/mimeapps.list", "[Default Applications]\nt/a=own.desktop\n"},
             {"config/kde-mimeapps.list", "[Default Applications]\nt/a=editor.desktop\n"}},
            "editor"},
           {"missing, masked, broken",
            {{"config/mimeapps.list",
              "[Default Applications]\nt/a=gone.desktop;masked.desktop;broken.desktop;"
              "../system/editor.desktop;viewer\n"},
             {"system/mimeinfo.cache", "[MIME Cache]\nt/a=viewer.desktop;\n"}},
            "viewer"},
           {"added",
            {{"apps/mimeapps.list", "[Added Associations]\nt/a=own.desktop;\n"},
             {"apps/mimeinfo.cache", "[MIME Cache]\nt/a=viewer.desktop;\n"}},
            "own"},
           {"removed",
            {{"config/mimeapps.list", "[Removed Associations]\nt/a=viewer.desktop;\n"},
             {"system/mimeinfo.cache", "[MIME Cache]\nt/a=viewer.desktop;editor.desktop\n"}},
            "editor"},
           {"removed further down",
            {{"config/mimeapps.list", "[Added Associations]\nt/a=viewer.desktop;\n"},
             {"system/mimeapps.list", "[Removed Associations]\nt/a=viewer.desktop;\n"}},
            "viewer"},
           {"below a folder",
            {{"apps/mimeinfo.cache", "[MIME Cache]\nt/a=sub-deep-er.desktop;\n"}},
            "deep-er"}}) {
    const Desktop desktop;
    for (const auto& [name, bytes] : c.files) desktop.root.Write(name, bytes);
    EXPECT_EQ(desktop.Find({"t/a", "t/p"}), c.found) << c.what;
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
