// The user's pager between standard output and the terminal.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

namespace ledrix {

// Rows and columns of the terminal that standard output is; nothing where it is none.
struct TerminalSize {
  int rows = 0;
  int columns = 0;
};
std::optional<TerminalSize> OutputTerminal();

// The locale's character set where it is neither UTF-8 nor plain ASCII; otherwise empty, which
// stands for UTF-8.
std::string LocaleCharset();

// While it lives, standard output goes to a pager: $PAGER, its words cut at spaces, or "less -RS".
// No shell is asked. The destructor waits for the user to leave it.
class Pager {
 public:
  // Nothing stands in between when no pager can be started.
  Pager();
  ~Pager();
  Pager(const Pager&) = delete;
  Pager& operator=(const Pager&) = delete;

  bool runs() const { return child_ > 0; }

 private:
  pid_t child_ = 0;
  int terminal_ = -1;  // what standard output was
};

}  // namespace ledrix
