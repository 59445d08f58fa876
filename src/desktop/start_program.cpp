#include "desktop/start_program.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>

#include "platform/files.h"

namespace ledrix {
namespace {

bool MayRun(const NativePath& path) {
  const Result<FileInfo> info = GetFileInfo(path);
  return info.ok() && info.value().kind == FileKind::kRegular && access(path.c_str(), X_OK) == 0;
}

// In the child, where only what is safe after a fork may be called.
[[noreturn]] void BecomeProgram(char* const* arguments, const char* folder, int report) {
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  // What this program ignores for itself.
  for (const int number : {SIGPIPE, SIGXFSZ}) signal(number, SIG_DFL);
  dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
  if (*folder == '\0' || chdir(folder) == 0) execv(arguments[0], arguments);
  const int number = errno;
  (void)!write(report, &number, sizeof number);
  _exit(127);
}

// Forks twice, so that the program is nobody's child to be waited for. Whatever goes wrong is
// written to `report`, which closes when the program runs.
void Start(char* const* arguments, const char* folder, int report) {
  const pid_t child = fork();
  if (child == 0) {
    setsid();
    const pid_t grandchild = fork();
    if (grandchild == 0) BecomeProgram(arguments, folder, report);
    if (grandchild < 0) (void)!write(report, &errno, sizeof errno);
    _exit(0);
  }
  if (child < 0) {
    (void)!write(report, &errno, sizeof errno);
    return;
  }
  while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
  }
}

}  // namespace

NativePath FindProgram(std::string_view name) {
  if (name.empty()) return {};
  if (name.find('/') != std::string_view::npos) {
    NativePath path = MakeAbsolute(NativePath(std::string(name)));
    return MayRun(path) ? path : NativePath();
  }
  const char* const variable = std::getenv("PATH");
  const std::string folders = variable != nullptr ? variable : "/usr/local/bin:/usr/bin:/bin";
  for (size_t start = 0; start <= folders.size();) {
    const size_t end = std::min(folders.find(':', start), folders.size());
    const std::string folder = folders.substr(start, end - start);
    start = end + 1;
    // What lies in a relative folder depends on where the program was started.
    if (!folder.starts_with('/')) continue;
    NativePath path = AddBackslash(NativePath(folder)) + name;
    if (MayRun(path)) return path;
  }
  return {};
}

Status StartProgram(const std::vector<std::string>& arguments, const NativePath& folder) {
  const NativePath program = arguments.empty() ? NativePath() : FindProgram(arguments[0]);
  if (program.empty()) return Error::System(ENOENT);
  std::vector<std::string> words = arguments;
  words[0] = program.bytes();
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);

  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return Error::System(errno);
  const FileDescriptor reading(ends[0]);
  FileDescriptor writing(ends[1]);
  Start(pointers.data(), folder.c_str(), writing.number());
  (void)writing.Close();
  int number = 0;
  ssize_t count = 0;
  while ((count = read(reading.number(), &number, sizeof number)) < 0 && errno == EINTR) {
  }
  return count == sizeof number ? Status(Error::System(number)) : Status();
}

}  // namespace ledrix
