#include "app/console_judge.h"

#include <unistd.h>

#include <cstdio>

#include "app/console_front_end.h"
#include "app/console_platform.h"
#include "charset/line_cutter.h"
#include "charset/refute_judgement.h"
#include "platform/files.h"
#include "platform/terminal.h"

namespace ledrix {
namespace {

// Returns the file's first bytes, as many as decide the judgement.
Result<std::string> ReadHead(const NativePath& path) {
  Result<InputFile> file = InputFile::Open(path);
  if (!file.ok()) return file.error();
  LineCutter cutter(file.value());
  const std::string head(cutter.Peek(modJudgeCode::kDecidingBytes));
  Status failure = cutter.failure();
  failure.KeepFirst(CheckUnchanged(path, file.value().info()));
  if (!failure.ok()) return failure.error();
  return head;
}

}  // namespace

int RunJudgeCommand(const CommonArguments& common, const JudgeArguments& arguments) {
  int status = 0;
  for (const std::string& path : arguments.paths) {
    const NativePath source(path == "-" ? "/dev/stdin" : path);
    const Result<std::string> head = ReadHead(MakeAbsolute(source));
    if (!head.ok()) {
      PrintTrouble(kConsoleProgram,
                   PathToUtf8(NativePath(path)) + ": " + DescribeError(head.error()));
      status = 2;
    } else if (!common.quiet) {
      const std::string_view code =
          modJudgeCode::ToText(modJudgeCode::FollowedVerdict(head.value()));
      std::printf("%s\t%s\n", std::string(code).c_str(), ShownOn(STDOUT_FILENO, path).c_str());
    }
  }
  return status;
}

}  // namespace ledrix
