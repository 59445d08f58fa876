#include "ui/window_platform.h"

#include <unistd.h>

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <cstdio>

#include "platform/terminal.h"
#include "ui/qt_text.h"

namespace ledrix {
namespace {

QMessageBox::Icon ToIcon(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::kQuestion:
      return QMessageBox::Question;
    case MessageIcon::kInformation:
      return QMessageBox::Information;
    case MessageIcon::kExclamation:
      break;
  }
  return QMessageBox::Warning;
}

// The lines of a message; a label breaks them at blanks only, which a long path does not have.
QString BreakableLines(const std::string& text) {
  constexpr QChar kBreakHere(0x200B);  // has no width
  constexpr int kLongestWord = 60;
  QString lines;
  int word = 0;
  for (const QChar c : ToShownLines(text)) {
    word = c.isSpace() ? 0 : word + 1;
    if (word > kLongestWord && !c.isLowSurrogate()) {
      lines += kBreakHere;
      word = 1;
    }
    lines += c;
  }
  return lines;
}

}  // namespace

MessageAnswer ShowMessageBox(const Message& message) {
  QMessageBox box(ToIcon(message.icon), ToQString(message.title), BreakableLines(message.text),
                  QMessageBox::NoButton, QApplication::activeWindow());
  box.setTextFormat(Qt::PlainText);
  if (message.buttons == MessageButtons::kOk) {
    box.setDefaultButton(box.addButton("OK", QMessageBox::AcceptRole));
    box.exec();
    return MessageAnswer::kOk;
  }
  QPushButton* const yes = box.addButton("はい(&Y)", QMessageBox::YesRole);
  QPushButton* const no = box.addButton("いいえ(&N)", QMessageBox::NoRole);
  box.setDefaultButton(message.default_answer == MessageAnswer::kYes ? yes : no);
  box.setEscapeButton(no);
  box.exec();
  return box.clickedButton() == yes ? MessageAnswer::kYes : MessageAnswer::kNo;
}

void WindowPlatform::ReportTrouble(const std::string& line) {
  std::fprintf(stderr, "ledrix: %s\n", ShownOn(STDERR_FILENO, line).c_str());
  if (on_trouble_) on_trouble_(line);
}

bool WindowPlatform::IsTimeToYield() {
  constexpr double kSecondsBetween = 0.02;
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC_COARSE, &now);  // a few nanoseconds, good to a few milliseconds
  const double apart = static_cast<double>(now.tv_sec - last_yield_.tv_sec) +
                       static_cast<double>(now.tv_nsec - last_yield_.tv_nsec) / 1e9;
  return apart >= kSecondsBetween;
}

void WindowPlatform::YieldToUi() {
  if (!IsTimeToYield()) return;
  if (on_yield_) on_yield_();
  QCoreApplication::processEvents(accepts_input_ ? QEventLoop::AllEvents
                                                 : QEventLoop::ExcludeUserInputEvents);
  clock_gettime(CLOCK_MONOTONIC_COARSE, &last_yield_);
}

}  // namespace ledrix
