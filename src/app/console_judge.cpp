#include "app/console_judge.h"

#include <unistd.h>

#include <cstdio>
#include <memory>
#include <vector>

#include "app/console_front_end.h"
#include "app/console_platform.h"
#include "charset/line_cutter.h"
#include "charset/refute_judgement.h"
#include "charset/sure_reading.h"
#include "platform/files.h"
#include "platform/terminal.h"

namespace ledrix {
namespace {

using modJudgeCode::PairVerdicts;
using modJudgeCode::SureJudge;
using modJudgeCode::SureVerdict;

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

// Prints what a judgement by all bytes found, and why.
void PrintWhy(const SureVerdict& verdict, const std::string& path) {
  std::printf("%s\t%s\t%s\t%s\n", modJudgeCode::ToText(verdict.code),
              modJudgeCode::ToText(verdict.found_by), ShownOn(STDOUT_FILENO, path).c_str(),
              modJudgeCode::WhyText(verdict).c_str());
}

NativePath SourceOf(const std::string& path) {
  return MakeAbsolute(NativePath(path == "-" ? "/dev/stdin" : path));
}

void TellTrouble(const std::string& path, const Error& error) {
  PrintTrouble(kConsoleProgram, PathToUtf8(NativePath(path)) + ": " + DescribeError(error));
}

int JudgeWhole(const JudgeArguments& arguments, bool quiet) {
  std::vector<std::unique_ptr<SureJudge>> judges;
  int status = 0;
  for (const std::string& path : arguments.paths) {
    judges.push_back(std::make_unique<SureJudge>());
    if (const Status unread = JudgeFile(SourceOf(path), *judges.back()); !unread.ok()) {
      TellTrouble(path, unread.error());
      judges.back().reset();
      status = 2;
    } else if (!arguments.pair && !quiet) {
      PrintWhy(judges.back()->Verdict(), path);
    }
  }
  if (!arguments.pair || status != 0 || quiet) return status;
  const PairVerdicts verdicts = modJudgeCode::JudgePair(*judges[0], *judges[1]);
  PrintWhy(verdicts.old_side, arguments.paths[0]);
  PrintWhy(verdicts.new_side, arguments.paths[1]);
  return status;
}

}  // namespace

int RunJudgeCommand(const CommonArguments& common, const JudgeArguments& arguments) {
  if (arguments.why) return JudgeWhole(arguments, common.quiet);
  int status = 0;
  for (const std::string& path : arguments.paths) {
    const Result<std::string> head = ReadHead(SourceOf(path));
    if (!head.ok()) {
      TellTrouble(path, head.error());
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
