#include "support/program.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

#include "support/test_files.h"

namespace ledrix::test {
namespace {

constexpr int kCouldNotStart = 126;

[[noreturn]] void Become(const std::vector<std::string>& command, const ProgramOptions& options,
                         const TempFolder& folder) {
  const auto redirect = [&folder](const char* name, int descriptor) {
    const int file = open(folder.At(name).c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    return file >= 0 && dup2(file, descriptor) == descriptor;
  };
  const bool ready = redirect("out", STDOUT_FILENO) && redirect("err", STDERR_FILENO) &&
                     (options.folder.empty() || chdir(options.folder.c_str()) == 0);
  if (!ready) _exit(kCouldNotStart);
  for (const std::string& variable : options.environment) {
    putenv(const_cast<char*>(variable.c_str()));
  }
  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (const std::string& argument : command) {
    arguments.push_back(const_cast<char*>(argument.c_str()));
  }
  arguments.push_back(nullptr);
  execv(arguments[0], arguments.data());
  _exit(kCouldNotStart);
}

}  // namespace

ProgramResult RunProgram(const std::vector<std::string>& command, const ProgramOptions& options) {
  const TempFolder folder;
  const pid_t child = fork();
  if (child == 0) Become(command, options, folder);
  int status = 0;
  waitpid(child, &status, 0);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status),
          ReadFile(folder.At("out")), ReadFile(folder.At("err"))};
}

}  // namespace ledrix::test
