#include "app/console_platform.h"

#include <unistd.h>

#include <cstdio>

#include "app/signals.h"
#include "platform/files.h"
#include "platform/terminal.h"

namespace ledrix {
namespace {

std::string InOneLine(const std::string& text) {
  std::string line;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\r' && text[i] != '\n') {
      line += text[i];
      continue;
    }
    line += " / ";
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
  }
  return line;
}

}  // namespace

void PrintTrouble(const char* program, const std::string& text) {
  std::fprintf(stderr, "%s: %s\n", program, ShownOn(STDERR_FILENO, InOneLine(text)).c_str());
}

std::optional<std::string> RefuseMissingFolder(const std::string& out) {
  if (out.empty()) return std::nullopt;
  const Result<FileInfo> folder = GetFileInfo(DirOf(MakeAbsolute(NativePath(out))));
  if (folder.ok() || !folder.error().IsMissing()) return std::nullopt;
  return "出力先のフォルダがありません: " + PathToUtf8(NativePath(out));
}

MessageAnswer ConsolePlatform::ShowMessage(const Message& message) {
  const bool titled = message.title != kProgramTitle;
  PrintTrouble(program_, titled ? message.title + ": " + message.text : message.text);
  return message.default_answer;
}

void ConsolePlatform::ReportTrouble(const std::string& line) {
  PrintTrouble(program_, line);
}

void ConsolePlatform::YieldToUi() {
  if (IsStopSignalled()) job_.StopRequested = true;
}

}  // namespace ledrix
