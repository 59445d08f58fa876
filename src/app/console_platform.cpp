#include "app/console_platform.h"

#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <string>

namespace ledrix {
namespace {

volatile std::sig_atomic_t signal_pending = 0;

void NoteSignal(int number) {
  signal_pending = 1;
  std::signal(number, SIG_DFL);
}

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

void InstallSignalHandlers() {
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) std::signal(number, NoteSignal);
  for (const int number : {SIGPIPE, SIGXFSZ}) std::signal(number, SIG_IGN);
}

void PrintTrouble(const std::string& text) {
  std::fprintf(stderr, "ledrixc: %s\n", InOneLine(text).c_str());
}

MessageAnswer ConsolePlatform::ShowMessage(const Message& message) {
  const bool titled = message.title != kProgramTitle;
  PrintTrouble(titled ? message.title + ": " + message.text : message.text);
  return message.default_answer;
}

void ConsolePlatform::ReportTrouble(const std::string& line) {
  PrintTrouble(line);
}

void ConsolePlatform::YieldToUi() {
  if (signal_pending != 0) job_.StopRequested = true;
}

ConsoleFrontEnd::ConsoleFrontEnd(bool quiet, bool progress)
    : quiet_(quiet), draw_progress_(progress && isatty(STDERR_FILENO) == 1) {}

void ConsoleFrontEnd::AddResultLine(const std::string& line) {
  if (quiet_) return;
  ClearProgress();
  std::fwrite(line.data(), 1, line.size(), stdout);
  std::fputc('\n', stdout);
}

void ConsoleFrontEnd::SetProgress(double left) {
  if (!draw_progress_) return;
  const int percent = static_cast<int>((left + kProgressWidth) / kProgressWidth * 100);
  if (percent == percent_drawn_) return;
  percent_drawn_ = percent;
  constexpr int kBarWidth = 50;
  const auto filled = static_cast<size_t>(percent * kBarWidth / 100);
  const std::string bar = std::string(filled, '#') + std::string(kBarWidth - filled, ' ');
  std::fprintf(stderr, "\r[%s] %3d%%", bar.c_str(), percent);
  std::fflush(stderr);
}

void ConsoleFrontEnd::ClearProgress() {
  if (percent_drawn_ < 0) return;
  std::fputs("\r\033[K", stderr);
  percent_drawn_ = -1;
}

}  // namespace ledrix
