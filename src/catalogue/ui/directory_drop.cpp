#include "catalogue/ui/directory_drop.h"

#include <QDropEvent>
#include <QMimeData>
#include <QScrollBar>
#include <QTimer>
#include <QTimerEvent>
#include <utility>

#include "platform/ui/uri_list.h"

namespace ml::catalogue::ui {
namespace {

constexpr int kOpenMilliseconds = 700, kScrollMilliseconds = 100;
/// From the edges of the tree, in pixels.
constexpr int kScrollEdge = 16;

std::vector<std::string> PathsOf(const QDropEvent& event) {
  return platform::ui::LocalPathsOfUriList(event.mimeData()->data(QStringLiteral("text/uri-list")).toStdString());
}

std::optional<TransferKind> KindOf(Qt::KeyboardModifiers keys) {
  if (keys.testFlag(Qt::ControlModifier)) return TransferKind::Copy;
  if (keys.testFlag(Qt::ShiftModifier)) return TransferKind::Move;
  return std::nullopt;
}

/// Whatever becomes of the files, the program they come from is not to delete them.
void AcceptAsCopy(QDropEvent& event) {
  event.setDropAction(Qt::CopyAction);
  event.accept();
}

}  // namespace

DirectoryDrop::DirectoryDrop(QTreeView& view, PathOf pathOf) : QObject(&view), view_(view), pathOf_(std::move(pathOf)) {
  view.viewport()->setAcceptDrops(true);
  view.viewport()->installEventFilter(this);
}

bool DirectoryDrop::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
      Hover(static_cast<QDropEvent&>(*event));
      return true;
    case QEvent::Drop:
      Drop(static_cast<QDropEvent&>(*event));
      return true;
    case QEvent::DragLeave:
      scroll_.stop();
      SetTarget({});
      return true;
    default:
      return QObject::eventFilter(watched, event);
  }
}

void DirectoryDrop::timerEvent(QTimerEvent* event) {
  if (event->timerId() == open_.timerId()) {
    open_.stop();
    if (target_.isValid()) view_.expand(target_);
  } else if (event->timerId() == scroll_.timerId()) {
    const int y = view_.viewport()->mapFromGlobal(QCursor::pos()).y();
    const int step = y < kScrollEdge ? -1 : (y >= view_.viewport()->height() - kScrollEdge ? 1 : 0);
    auto& bar = *view_.verticalScrollBar();
    bar.setValue(bar.value() + step * bar.singleStep());
  } else {
    QObject::timerEvent(event);
  }
}

void DirectoryDrop::Hover(QDropEvent& event) {
  if (PathsOf(event).empty()) return event.ignore();
  if (!scroll_.isActive()) scroll_.start(kScrollMilliseconds, this);
  SetTarget(view_.indexAt(event.position().toPoint()));
  target_.isValid() ? AcceptAsCopy(event) : event.ignore();
}

void DirectoryDrop::Drop(QDropEvent& event) {
  const DroppedFiles files{.paths = PathsOf(event),
                           .directory = pathOf_(view_.indexAt(event.position().toPoint())),
                           .kind = KindOf(event.modifiers()),
                           .position = view_.viewport()->mapToGlobal(event.position().toPoint())};
  scroll_.stop();
  SetTarget({});
  if (files.paths.empty() || files.directory.empty()) return event.ignore();
  AcceptAsCopy(event);
  // The other program waits until this event is done, and questions may follow.
  QTimer::singleShot(0, this, [this, files] { Q_EMIT dropped(files); });
}

void DirectoryDrop::SetTarget(const QModelIndex& index) {
  if (index == target_) return;
  target_ = index;
  index.isValid() ? open_.start(kOpenMilliseconds, this) : open_.stop();
  view_.viewport()->update();
}

}  // namespace ml::catalogue::ui
