#include "app/console_front_end.h"

#include <unistd.h>

#include <cstdio>

#include "platform/terminal.h"

namespace ledrix {

ConsoleFrontEnd::ConsoleFrontEnd(bool quiet, bool progress)
    : quiet_(quiet), draw_progress_(progress && isatty(STDERR_FILENO) == 1) {}

void ConsoleFrontEnd::AddResultLine(const std::string& line) {
  entries_.push_back(line);
  if (quiet_) return;
  ClearProgress();
  // The path in a line may hold anything; two lines an output stay two lines, in UTF-8.
  std::printf("%s\n", ShownOn(STDOUT_FILENO, PathToUtf8(NativePath(line))).c_str());
}

void ConsoleFrontEnd::SetProgress(double left) {
  percent_ = static_cast<int>((left + kProgressWidth) / kProgressWidth * 100);
  if (draw_progress_) Draw();
}

void ConsoleFrontEnd::SetMessage(const std::string& text) {
  message_ = text.substr(text.find_last_of("\r\n") + 1);
  if (draw_progress_) Draw();
}

void ConsoleFrontEnd::SetBarText(const std::string& text) {
  bar_text_ = text;
  if (draw_progress_) Draw();
}

void ConsoleFrontEnd::Draw() {
  constexpr int kBarWidth = 50;
  const auto filled = static_cast<size_t>(percent_ * kBarWidth / 100);
  std::string line = "[" + std::string(filled, '#') + std::string(kBarWidth - filled, ' ') + "] " +
                     std::to_string(percent_) + "% " + WithoutControls(bar_text_ + " " + message_);
  if (line == drawn_) return;
  std::fprintf(stderr, "\r\033[K%s", line.c_str());
  std::fflush(stderr);
  drawn_ = std::move(line);
}

void ConsoleFrontEnd::ClearProgress() {
  if (drawn_.empty()) return;
  std::fputs("\r\033[K", stderr);
  drawn_.clear();
}

}  // namespace ledrix
