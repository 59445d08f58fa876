#include "ui/path_drops.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

namespace ledrix {
namespace {

// The first local path of what is dragged; empty when it is no list of files.
NativePath FirstPath(const QMimeData& data) {
  for (const QUrl& url : data.urls()) {
    if (!url.isLocalFile()) continue;
    const QByteArray bytes = QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toUtf8());
    return NativePath(bytes.toStdString());
  }
  return {};
}

}  // namespace

void PathDrops::Accept(std::initializer_list<QWidget*> targets) {
  for (QWidget* const target : targets) {
    target->setAcceptDrops(true);
    target->installEventFilter(this);
  }
}

bool PathDrops::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove: {
      auto* const drag = static_cast<QDropEvent*>(event);
      if (FirstPath(*drag->mimeData()).empty()) {
        drag->ignore();
      } else {
        drag->setDropAction(Qt::CopyAction);
        drag->accept();
      }
      return true;
    }
    case QEvent::Drop: {
      auto* const drop = static_cast<QDropEvent*>(event);
      const NativePath path = FirstPath(*drop->mimeData());
      if (path.empty()) return true;
      drop->setDropAction(Qt::CopyAction);
      drop->accept();
      on_drop_(path);
      return true;
    }
    default:
      return QObject::eventFilter(watched, event);
  }
}

}  // namespace ledrix
