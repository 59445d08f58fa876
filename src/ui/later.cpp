#include "ui/later.h"

#include <QTimer>
#include <utility>

namespace ledrix {

void DoLater(QObject& owner, std::function<void()> work) {
  auto* const timer = new QTimer(&owner);
  timer->setSingleShot(true);
  QObject::connect(timer, &QTimer::timeout, timer, [timer, work = std::move(work)] {
    timer->deleteLater();
    work();
  });
  timer->start(0);
}

}  // namespace ledrix
