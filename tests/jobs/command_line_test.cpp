#include "jobs/command_line.h"

#include <gtest/gtest.h>

#include "support/test_files.h"

namespace ledrix {
namespace {

using Texts = std::vector<std::string>;

TEST(CommandLine, IsReadFromOneText) {
  for (const auto& row : test::ReadTable("command_lines.tsv")) {
    const CommandLineArgs args = ParseCommandLine(std::string_view(row[0]));
    EXPECT_EQ((Texts{row[0], args.old_path, args.new_path, args.output_path, args.list_value,
                     args.merge_marks ? "yes" : "no", args.debug_log ? "yes" : "no"}),
              row);
  }
}

TEST(CommandLine, IsReadFromArguments) {
  const auto args =
      ParseCommandLine(Texts{"/Old", " a b ", "", "y", "/new", "\"q\"", " /dm ", "z"});
  EXPECT_EQ(args.old_path, "a b");
  EXPECT_EQ(args.new_path, "\"q\"");
  EXPECT_TRUE(args.merge_marks);
  EXPECT_EQ(args.others, (Texts{"y", "z"}));
}

}  // namespace
}  // namespace ledrix
