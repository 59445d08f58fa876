#include "jobs/command_line.h"

#include <gtest/gtest.h>

namespace ledrix {
namespace {

struct ArgumentsCase {
  const char* text;
  const char* old_path;
  const char* new_path;
  const char* output_path;
  const char* list_value;
  bool merge_marks;
  bool debug_log;
};

void ExpectArgs(const CommandLineArgs& args, const ArgumentsCase& c) {
  EXPECT_EQ(args.old_path, c.old_path) << c.text;
  EXPECT_EQ(args.new_path, c.new_path) << c.text;
  EXPECT_EQ(args.output_path, c.output_path) << c.text;
  EXPECT_EQ(args.list_value, c.list_value) << c.text;
  EXPECT_EQ(args.merge_marks, c.merge_marks) << c.text;
  EXPECT_EQ(args.debug_log, c.debug_log) << c.text;
}

TEST(CommandLine, IsReadFromOneText) {
  const ArgumentsCase cases[] = {
      {"", "", "", "", "", false, false},
      {"/OLD a.txt /NEW b.txt", "a.txt", "b.txt", "", "", false, false},
      {"/old \"C:\\My Files\\a.txt\" /new \" b c \"", "C:\\My Files\\a.txt", "b c", "", "", false,
       false},
      {"/old a", "a", "", "", "", false, false},
      {"/old /new b.txt", "/new", "b.txt", "", "", false, false},
      {"/old a /new b /out", "a", "b", "", "", false, false},
      {"/old a /old c /dM /DG /lst v x", "c", "", "", "v", true, true},
      {"/old\ta /new b", "", "b", "", "", false, false},
      {"/old \"\" a", "a", "", "", "", false, false},
      {"/old a\"b c\"d", "a", "", "", "", false, false},
      {"/out \"/Dm\"", "", "", "/Dm", "", true, false},
      {"\"/old\" \"a", "a", "", "", "", false, false},
  };
  for (const ArgumentsCase& c : cases) ExpectArgs(ParseCommandLine(std::string_view(c.text)), c);
}

TEST(CommandLine, IsReadFromArguments) {
  ExpectArgs(
      ParseCommandLine(std::vector<std::string>{"/Old", " a b ", "", "/new", "\"q\"", " /dm "}),
      {"arguments", "a b", "\"q\"", "", "", true, false});
}

}  // namespace
}  // namespace ledrix
