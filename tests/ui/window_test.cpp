#include "ui/window_test.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QThread>

#include "ui/qt_text.h"

namespace ledrix::test {
namespace {

constexpr int kPollMilliseconds = 20;
constexpr qint64 kPatienceMilliseconds = 10000;

QWidget* TopWindow() {
  QWidget* const popup = QApplication::activePopupWidget();
  return popup != nullptr ? popup : QApplication::activeModalWidget();
}

}  // namespace

void PressBoxButton(QWidget& box, const QString& text) {
  for (QAbstractButton* const button : box.findChildren<QAbstractButton*>()) {
    QString caption = button->text();
    caption.remove('&');
    if (caption == text || caption.startsWith(text + "(")) {
      button->click();
      return;
    }
  }
  ADD_FAILURE() << "no button " << ToUtf8(text);
  box.close();
}

std::string DefaultButton(const QWidget& box) {
  for (const QPushButton* const button : box.findChildren<QPushButton*>()) {
    if (button->isDefault()) return ToUtf8(button->text().section('(', 0, 0));
  }
  return {};
}

bool WaitUntil(const std::function<bool()>& condition) {
  QElapsedTimer timer;
  timer.start();
  while (!condition()) {
    if (timer.elapsed() > kPatienceMilliseconds) return false;
    QCoreApplication::processEvents();
    QThread::msleep(1);
  }
  return true;
}

ModalScript::ModalScript() {
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Poll(); });
  waiting_.start();
  timer_.start(kPollMilliseconds);
}

ModalScript::~ModalScript() {
  EXPECT_TRUE(steps_.empty()) << steps_.size() << " windows did not open";
}

ModalScript& ModalScript::Then(Step step) {
  steps_.push_back(std::move(step));
  return *this;
}

ModalScript& ModalScript::Answer(const QString& button) {
  return Then([this, button](QWidget& window) {
    const auto* const box = dynamic_cast<QMessageBox*>(&window);
    if (box == nullptr) {
      ADD_FAILURE() << "no message box: " << ToUtf8(window.windowTitle());
      window.close();
      return;
    }
    texts.push_back(ToUtf8(box->windowTitle() + ": " + box->text()));
    PressBoxButton(window, button);
  });
}

void ModalScript::Poll() {
  handled_.removeIf([](const QPointer<QWidget>& w) { return w.isNull() || !w->isVisible(); });
  QWidget* const window = TopWindow();
  if (window == nullptr) return;
  if (handled_.contains(window)) {
    if (waiting_.elapsed() < kPatienceMilliseconds) return;
    ADD_FAILURE() << "a window stays open: " << ToUtf8(window->windowTitle());
    window->close();
    return;
  }
  waiting_.restart();
  handled_.append(window);
  if (steps_.empty()) {
    ADD_FAILURE() << "unexpected window: " << ToUtf8(window->windowTitle());
    window->close();
    return;
  }
  const Step step = std::move(steps_.front());
  steps_.pop_front();
  // A timer does not fire while its own handler runs, and the step may open further windows.
  timer_.stop();
  timer_.start(kPollMilliseconds);
  step(*window);
}

}  // namespace ledrix::test
