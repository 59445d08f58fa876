// The version window: a splash at the start, and the program's version on demand.
#pragma once

#include <QDialog>

namespace ledrix {

class DesktopActions;

inline constexpr const char* kWebAddress = "https://ledrix.example/";

class LedrixFv : public QDialog {
 public:
  // A splash has no buttons. `actions` must outlive the window.
  enum class Use { kSplash, kOnDemand };
  LedrixFv(Use use, DesktopActions& actions, QWidget* parent = nullptr);
};

}  // namespace ledrix
