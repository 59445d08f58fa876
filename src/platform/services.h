// What the program asks of the desktop or terminal it runs on. The defaults need neither; a front
// end replaces what it can do better, and tests record or fix what they look at.
#pragma once

#include <string>

#include "platform/local_time.h"
#include "platform/native_path.h"

namespace ledrix {

enum class MessageIcon { kExclamation, kQuestion, kInformation };
enum class MessageButtons { kOk, kYesNo };
enum class MessageAnswer { kOk, kYes, kNo };

inline constexpr const char* kProgramTitle = "Ledrix";

// A message box. Texts are UTF-8; lines of `text` are separated by "\r", "\n" or "\r\n".
struct Message {
  std::string text;
  std::string title = kProgramTitle;
  MessageIcon icon = MessageIcon::kExclamation;
  MessageButtons buttons = MessageButtons::kOk;
  MessageAnswer default_answer = MessageAnswer::kOk;
};

// One object serves a whole run. There is one thread.
class PlatformServices {
 public:
  PlatformServices() = default;
  PlatformServices(const PlatformServices&) = delete;
  PlatformServices& operator=(const PlatformServices&) = delete;
  virtual ~PlatformServices() = default;

  // Shows a message and returns the button pressed; here the default button.
  virtual MessageAnswer ShowMessage(const Message& message) { return message.default_answer; }

  // Tells of trouble that has no message box of its own, as one line of UTF-8 for stderr.
  virtual void ReportTrouble(const std::string& /*line*/) {}

  // Gives the user interface a chance to act, such as asking a job to stop. Called once per unit
  // of work, so it must cost next to nothing.
  virtual void YieldToUi() {}

  // Yields between the blocks of a file. The file must not outlive this object.
  template <class File>
  void YieldBetweenBlocks(File& file) {
    file.OnBlock([this] { YieldToUi(); });
  }

  virtual LocalTime Now() { return SystemNow(); }
};

}  // namespace ledrix
