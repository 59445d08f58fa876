// Launcher files and their Exec lines.
#include <algorithm>

#include "desktop/exec_line.h"
#include "desktop/launcher.h"
#include "support.h"
#include "targets.h"

namespace ledrix::fuzz {
namespace {

constexpr const char* kFile = "/\xE5\xB7\xA5/a \"$(b)\" '%f.txt";

void CheckWords(const Launcher& launcher) {
  const LauncherWord& program = launcher.words.at(0);
  Require(program.size() == 1 && program[0].code == '\0' && !program[0].text.empty(),
          "the first word is a program");
  const std::vector<std::string> arguments = LauncherArguments(launcher, NativePath(kFile));
  Require(arguments.at(0) == program[0].text, "and is started");
  const auto names_file = [](const LauncherPiece& piece) {
    return piece.code != '\0' && std::string_view("fFuU").find(piece.code) != std::string::npos;
  };
  const bool has_code = std::ranges::any_of(launcher.words, [&](const LauncherWord& word) {
    return std::ranges::any_of(word, names_file);
  });
  Require(has_code || arguments.back() == kFile, "without a code the file comes last");
  std::vector<std::string> others = LauncherArguments(launcher, NativePath("/other"));
  Require(others.size() == arguments.size(), "a file's name makes no more arguments and no fewer");
  others.back() = arguments.back();
  Require(has_code || others == arguments, "and nowhere else");
}

}  // namespace

void LauncherTarget(std::string_view bytes) {
  static const MemoryFile file;
  file.Fill(bytes);
  if (const std::optional<Launcher> launcher = ReadLauncher(file.path())) CheckWords(*launcher);
  Launcher launcher;
  if (std::optional<std::vector<LauncherWord>> words = CutExecLine(bytes)) {
    launcher.words = std::move(*words);
    CheckWords(launcher);
  }
}

}  // namespace ledrix::fuzz
