// What tests of windows share: waiting for windows, pressing their buttons, answering boxes.
#pragma once

#include <QAbstractButton>
#include <QElapsedTimer>
#include <QList>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <QWidget>
#include <deque>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/test_files.h"

namespace ledrix::test {

// The descendant of this kind and object name, which must exist.
template <class Widget>
Widget* Find(const QWidget& parent, const char* name) {
  Widget* const found = parent.findChild<Widget*>(name);
  if (found == nullptr) throw std::runtime_error(std::string("no control ") + name);
  return found;
}

// Presses the button of a box whose text, access key and mark left out, is `text`.
void PressBoxButton(QWidget& box, const QString& text);

// The caption of a box's default button.
std::string DefaultButton(const QWidget& box);

// Lets events act until the condition holds; false after ten seconds.
bool WaitUntil(const std::function<bool()>& condition);

// Acts on modal windows and popup menus, one after the other in the order of their opening, while
// a test sits in the call that opened the first. What is left unused at its end fails the test, as
// does a window that nobody expected.
class ModalScript {
 public:
  using Step = std::function<void(QWidget& window)>;

  ModalScript();
  ~ModalScript();
  ModalScript(const ModalScript&) = delete;
  ModalScript& operator=(const ModalScript&) = delete;

  // The next window; the step must close it, or open and close others above it.
  ModalScript& Then(Step step);
  // The next window is a message box: notes its title and text in `texts`, then presses a button.
  ModalScript& Answer(const QString& button);

  // "TITLE: TEXT" of each message box, lines separated by "\n".
  std::vector<std::string> texts;

 private:
  void Poll();

  QTimer timer_;
  QElapsedTimer waiting_;
  std::deque<Step> steps_;
  QList<QPointer<QWidget>> handled_;  // open windows whose step runs or ran
};

}  // namespace ledrix::test
