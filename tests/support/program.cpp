#include "support/program.h"

#include <fcntl.h>
#include <grp.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

#include "support/test_files.h"

namespace ledrix::test {
namespace {

constexpr uid_t kNobody = 65534;
constexpr int kCouldNotStart = 126;

bool DropRoot() {
  return setgroups(0, nullptr) == 0 && setresgid(kNobody, kNobody, kNobody) == 0 &&
         setresuid(kNobody, kNobody, kNobody) == 0;
}

bool SucceedsInAChild(const std::function<bool()>& action) {
  const pid_t child = fork();
  if (child == 0) _exit(action() ? 0 : 1);
  int status = 0;
  return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// The program is opened before root is dropped: its folder need not be open to everybody.
[[noreturn]] void Become(const std::vector<std::string>& command, const ProgramOptions& options,
                         const TempFolder& folder) {
  const auto redirect = [&folder](const char* name, int descriptor) {
    const int file = open(folder.At(name).c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    return file >= 0 && dup2(file, descriptor) == descriptor;
  };
  const int program = open(command[0].c_str(), O_RDONLY | O_CLOEXEC);
  const bool ready = program >= 0 && redirect("out", STDOUT_FILENO) &&
                     redirect("err", STDERR_FILENO) && (!options.as_nobody || DropRoot()) &&
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
  fexecve(program, arguments.data(), environ);
  _exit(kCouldNotStart);
}

}  // namespace

bool MayDropRoot() {
  return geteuid() == 0 && SucceedsInAChild(DropRoot);
}

ProgramResult RunProgram(const std::vector<std::string>& command, const ProgramOptions& options) {
  const TempFolder folder;
  const pid_t child = fork();
  if (child == 0) Become(command, options, folder);
  if (options.meanwhile) options.meanwhile(child);
  int status = 0;
  waitpid(child, &status, 0);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status),
          ReadFile(folder.At("out")), ReadFile(folder.At("err"))};
}

}  // namespace ledrix::test
