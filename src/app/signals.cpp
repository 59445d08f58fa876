#include "app/signals.h"

#include <csignal>
#include <initializer_list>

namespace ledrix {
namespace {

volatile std::sig_atomic_t signal_pending = 0;

void NoteSignal(int number) {
  if (signal_pending != 0) {
    std::signal(number, SIG_DFL);
    std::raise(number);
  }
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
  for (const int number : {SIGPIPE, SIGXFSZ}) std::signal(number, SIG_IGN);
}

bool IsStopSignalled() {
  return signal_pending != 0;
}

}  // namespace ledrix
