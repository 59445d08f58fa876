#include "platform/native_path.h"

#include <gtest/gtest.h>

#include "text/code_page_932.h"

namespace ledrix {
namespace {

TEST(NativePath, HelpersFollowTheRulesInBothStyles) {
  struct Case {
    PathStyle style;
    const char* path;
    const char* with_separator;
    const char* without_separator;
    const char* file_name;
    const char* folder;
    const char* base;
    const char* extension;
    const char* for_pattern;
  };
  constexpr auto kWin = PathStyle::kWindows;
  constexpr auto kPosix = PathStyle::kPosix;
  const Case cases[] = {
      {kWin, "C", "C:\\", "C:", "", "C", "C", "", "C"},
      {kPosix, "C", "C/", "C", "", "C", "C", "", "C"},
      {kWin, "", "\\", "", "", "", "", "", ""},
      {kPosix, "", "/", "", "", "", "", "", ""},
      {kPosix, "/", "/", "", "", "/", "", "", ""},
      {kWin, "C:\\a\\main.c", "C:\\a\\main.c\\", "C:\\a\\main.c", "main.c", "C:\\a\\", "main", ".c",
       "main_c"},
      {kPosix, "/a/b.c.txt", "/a/b.c.txt/", "/a/b.c.txt", "b.c.txt", "/a/", "b.c", ".txt",
       "b_c_txt"},
      {kPosix, "/a.d/name", "/a.d/name/", "/a.d/name", "name", "/a.d/", "name", "", "name"},
      {kPosix, "/a/b/", "/a/b/", "/a/b", "", "/a/b/", "", "", ""},
      {kPosix, "/a/x\\y.c", "/a/x\\y.c/", "/a/x\\y.c", "x\\y.c", "/a/", "x\\y", ".c", "x\\y_c"},
      {kPosix, "name", "name/", "name", "", "name", "name", "", "name"},
      {kPosix, "/a/.rc", "/a/.rc/", "/a/.rc", ".rc", "/a/", "", ".rc", "_rc"},
  };
  for (const Case& c : cases) {
    const NativePath path(c.path);
    EXPECT_EQ(AddBackslash(path, c.style).bytes(), c.with_separator) << c.path;
    EXPECT_EQ(StripBackslash(path, c.style).bytes(), c.without_separator) << c.path;
    EXPECT_EQ(FileNameOf(path, c.style), c.file_name) << c.path;
    EXPECT_EQ(DirOf(path, c.style).bytes(), c.folder) << c.path;
    EXPECT_EQ(BaseNameOf(path, c.style), c.base) << c.path;
    EXPECT_EQ(ExtensionOf(path, c.style), c.extension) << c.path;
    EXPECT_EQ(NameForPattern(path, c.style), c.for_pattern) << c.path;
  }
}

TEST(NativePath, PrintingNeverBreaksALine) {
  const NativePath path("/表/\xFFx\r\ny😀");
  EXPECT_EQ(PathToSjis(path), "/表/?x??y?"_sjis);
  EXPECT_EQ(PathToUtf8(path), "/表/\uFFFDx??y😀");
}

}  // namespace
}  // namespace ledrix
