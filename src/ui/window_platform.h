// What the program asks of a desktop: message boxes, and events while a job runs.
#pragma once

#include <ctime>
#include <functional>
#include <string>

#include "platform/services.h"

namespace ledrix {

// Shows a box above the active window and returns the button pressed; its buttons are Japanese
// whatever the desktop speaks. REQUIRES: an application object exists.
MessageAnswer ShowMessageBox(const Message& message);

// REQUIRES: an application object exists while it is used.
class WindowPlatform : public PlatformServices {
 public:
  // A job that shows a message has told things before it that are to be seen.
  MessageAnswer ShowMessage(const Message& message) override {
    if (on_yield_) on_yield_();
    return ShowMessageBox(message);
  }
  // On stderr, and to OnTrouble.
  void ReportTrouble(const std::string& line) override;
  // Lets pending events act, at most every 20 milliseconds.
  void YieldToUi() override;

  // Called before events act, to show what a job has told meanwhile.
  void OnYield(std::function<void()> hook) { on_yield_ = std::move(hook); }
  void OnTrouble(std::function<void(const std::string&)> hook) { on_trouble_ = std::move(hook); }
  // While false the mouse and the keys wait.
  void AcceptInput(bool accept) { accepts_input_ = accept; }

 private:
  bool IsTimeToYield();

  std::function<void()> on_yield_;
  std::function<void(const std::string&)> on_trouble_;
  bool accepts_input_ = true;
  timespec last_yield_{};
};

}  // namespace ledrix
