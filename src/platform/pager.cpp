#include "platform/pager.h"

#include <fcntl.h>
#include <langinfo.h>
#include <locale.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "text/ascii.h"

namespace ledrix {
namespace {

std::vector<std::string> PagerWords() {
  const char* const named = std::getenv("PAGER");
  std::vector<std::string> words;
  for (std::string& word : SplitAt(named == nullptr ? "" : named, ' ')) {
    if (!word.empty()) words.push_back(std::move(word));
  }
  if (!words.empty()) return words;
  words = {"less", "-RS"};
  // A listing is wider than most terminals. Prompts of less are ASCII.
  words.emplace_back("-Ps[<-] [->] [q] ");
  return words;
}

// In the child, where only what is safe after a fork may be called.
[[noreturn]] void BecomePager(char* const* words, int input, int report) {
  for (const int number : {SIGINT, SIGQUIT, SIGTERM, SIGHUP, SIGPIPE, SIGXFSZ})
    signal(number, SIG_DFL);
  dup2(input, STDIN_FILENO);
  execvp(words[0], words);
  (void)!write(report, &errno, sizeof errno);
  _exit(127);
}

// True when nothing is reported before the other end closes: the program runs.
bool Started(int report) {
  int error = 0;
  ssize_t count = 0;
  do {
    count = read(report, &error, sizeof error);
  } while (count < 0 && errno == EINTR);
  return count == 0;
}

void WaitFor(pid_t child) {
  while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
  }
}

}  // namespace

std::optional<TerminalSize> OutputTerminal() {
  if (isatty(STDOUT_FILENO) != 1) return std::nullopt;
  winsize size{};
  if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_row == 0 || size.ws_col == 0) {
    return TerminalSize{24, 80};
  }
  return TerminalSize{size.ws_row, size.ws_col};
}

std::string LocaleCharset() {
  const locale_t locale = newlocale(LC_CTYPE_MASK, "", nullptr);
  if (locale == nullptr) return {};
  const std::string charset = nl_langinfo_l(CODESET, locale);
  freelocale(locale);
  const bool is_default = charset == "UTF-8" || charset == "ANSI_X3.4-1968" || charset.empty();
  return is_default ? std::string() : charset;
}

Pager::Pager() {
  std::fflush(stdout);
  // A pager without options of its own still lets colours through and does not fold rows.
  setenv("LESS", "-RS", 0);
  if (LocaleCharset().empty()) setenv("LESSCHARSET", "utf-8", 0);
  int text[2];
  int report[2];
  if (pipe2(text, O_CLOEXEC) != 0) return;
  if (pipe2(report, O_CLOEXEC) != 0) {
    close(text[0]);
    close(text[1]);
    return;
  }
  std::vector<std::string> words = PagerWords();
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  const pid_t child = fork();
  if (child == 0) BecomePager(arguments.data(), text[0], report[1]);
  close(text[0]);
  close(report[1]);
  if (child > 0 && Started(report[0])) {
    // The pager answers the keys that stop a program.
    for (const int number : {SIGINT, SIGQUIT}) std::signal(number, SIG_IGN);
    terminal_ = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3);
    dup2(text[1], STDOUT_FILENO);
    child_ = child;
  } else if (child > 0) {
    WaitFor(child);
  }
  close(report[0]);
  close(text[1]);
}

Pager::~Pager() {
  if (!runs()) return;
  std::fflush(stdout);
  // Who leaves a pager early wants no more of the text.
  std::clearerr(stdout);
  dup2(terminal_, STDOUT_FILENO);
  close(terminal_);
  WaitFor(child_);
}

}  // namespace ledrix
