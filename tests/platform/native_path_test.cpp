#include "platform/native_path.h"

#include <gtest/gtest.h>

#include "support/test_files.h"
#include "text/code_page_932.h"

namespace ledrix {
namespace {

TEST(NativePath, HelpersFollowTheRulesInBothStyles) {
  for (const auto& row : test::ReadTable("native_paths.tsv")) {
    const PathStyle style = row[0] == "Windows" ? PathStyle::kWindows : PathStyle::kPosix;
    const NativePath path(row[1]);
    const std::vector<std::string> parts = {row[0],
                                            row[1],
                                            AddBackslash(path, style).bytes(),
                                            StripBackslash(path, style).bytes(),
                                            FileNameOf(path, style),
                                            DirOf(path, style).bytes(),
                                            BaseNameOf(path, style),
                                            ExtensionOf(path, style),
                                            NameForPattern(path, style)};
    EXPECT_EQ(parts, row);
  }
}

TEST(NativePath, PrintingNeverBreaksALine) {
  const NativePath path("/表/\xFFx\r\ny😀");
  EXPECT_EQ(PathToSjis(path), "/表/?x??y?"_sjis);
  EXPECT_EQ(PathToUtf8(path), "/表/\uFFFDx??y😀");
}

}  // namespace
}  // namespace ledrix
