#include "platform/ui/path_drop_target.h"

#include <QDropEvent>
#include <QMimeData>
#include <QWidget>

#include "platform/ui/internal_drag.h"
#include "platform/ui/uri_list.h"

namespace ml::platform::ui {
namespace {

std::vector<std::string> DroppedPaths(const QMimeData& data) {
  if (IsInternalDrag(data)) return {};
  return LocalPathsOfUriList(data.data(QStringLiteral("text/uri-list")).toStdString());
}

/// Dropped files are opened where they lie, so the source is never told that they were moved.
void AcceptAsCopy(QDropEvent& event) {
  event.setDropAction(Qt::CopyAction);
  event.accept();
}

}  // namespace

PathDropTarget::PathDropTarget(QWidget* widget) : QObject(widget) {
  widget->setAcceptDrops(true);
  widget->installEventFilter(this);
}

bool PathDropTarget::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove: {
      auto& drag = static_cast<QDropEvent&>(*event);
      if (DroppedPaths(*drag.mimeData()).empty()) return false;
      AcceptAsCopy(drag);
      return true;
    }
    case QEvent::Drop: {
      auto& drop = static_cast<QDropEvent&>(*event);
      const auto paths = DroppedPaths(*drop.mimeData());
      if (paths.empty()) return false;
      AcceptAsCopy(drop);
      Q_EMIT pathsDropped(paths);
      return true;
    }
    default:
      return QObject::eventFilter(watched, event);
  }
}

}  // namespace ml::platform::ui
