#include "app/signals.h"

#include <unistd.h>

#include <climits>
#include <csignal>
#include <cstring>

namespace ledrix {
namespace {

volatile std::sig_atomic_t signal_pending = 0;

// What a signal handler may look at: each path in memory of its own.
struct NotedFile {
  volatile std::sig_atomic_t used = 0;
  char path[PATH_MAX] = {};
};
NotedFile noted_files[4];

void RemoveNotedFilesAndEnd(int number) {
  for (const NotedFile& file : noted_files) {
    if (file.used != 0) unlink(file.path);
  }
  std::signal(number, SIG_DFL);
  std::raise(number);
}

void NoteSignal(int number) {
  if (signal_pending != 0) RemoveNotedFilesAndEnd(number);
  signal_pending = 1;
}

// A signal that was ignored when the program was started stays ignored. Without SA_RESTART, so
// that a job that waits for a pipe hears of the request.
void Handle(int number, void (*handler)(int)) {
  struct sigaction before {};
  if (sigaction(number, nullptr, &before) == 0 && before.sa_handler == SIG_IGN) return;
  struct sigaction action {};
  action.sa_handler = handler;
  sigemptyset(&action.sa_mask);
  sigaction(number, &action, nullptr);
}

}  // namespace

void InstallSignalHandlers() {
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) Handle(number, NoteSignal);
  for (const int number : {SIGQUIT, SIGXCPU, SIGALRM, SIGUSR1, SIGUSR2}) {
    Handle(number, RemoveNotedFilesAndEnd);
  }
  for (const int number : {SIGPIPE, SIGXFSZ}) std::signal(number, SIG_IGN);
}

bool IsStopSignalled() {
  return signal_pending != 0;
}

void NoteTemporaryFile(const NativePath& path) {
  for (NotedFile& file : noted_files) {
    if (file.used != 0 || path.bytes().size() >= sizeof file.path) continue;
    std::strcpy(file.path, path.c_str());
    file.used = 1;
    return;
  }
}

void ForgetTemporaryFile(const NativePath& path) {
  for (NotedFile& file : noted_files) {
    if (file.used != 0 && path.bytes() == file.path) file.used = 0;
  }
}

}  // namespace ledrix
