// Dropping files and folders on controls.
#pragma once

#include <QObject>
#include <QWidget>
#include <functional>
#include <initializer_list>

#include "platform/native_path.h"

namespace ledrix {

// Lets controls take what is dragged onto them: its first local path is handed on. What holds none
// is refused.
class PathDrops : public QObject {
 public:
  // `on_drop` is called from the event handler of the drop. `owner` owns this; it must not outlive
  // what the function refers to.
  PathDrops(std::function<void(const NativePath&)> on_drop, QObject* owner)
      : QObject(owner), on_drop_(std::move(on_drop)) {}

  void Accept(std::initializer_list<QWidget*> targets);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  const std::function<void(const NativePath&)> on_drop_;
};

}  // namespace ledrix
