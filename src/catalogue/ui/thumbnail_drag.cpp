#include "catalogue/ui/thumbnail_drag.h"

#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QTimerEvent>
#include <memory>

#include "platform/ui/accent.h"
#include "platform/ui/internal_drag.h"
#include "platform/ui/uri_list.h"

namespace ml::catalogue::ui {
namespace {

constexpr int kScrollMilliseconds = 50;
constexpr QPoint kBesidePointer(-16, -16);
constexpr int kDraggedSize = 96;

}  // namespace

ThumbnailDrag::ThumbnailDrag(QListView& view, const ImageList& list) : QObject(&view), view_(view), list_(list) {
  view.setDragEnabled(true);
  view.viewport()->setAcceptDrops(true);
  view.viewport()->installEventFilter(this);
}

void ThumbnailDrag::Start() {
  const auto paths = list_.SelectedPaths();
  if (paths.empty()) return;
  auto data = std::make_unique<QMimeData>();
  data->setData(QStringLiteral("text/uri-list"), QByteArray::fromStdString(platform::ui::UriListOf(paths)));
  platform::ui::MarkInternalDrag(*data);
  auto* drag = new QDrag(&view_);
  drag->setMimeData(data.release());
  if (const QRect cell = view_.visualRect(view_.currentIndex()); !cell.isEmpty()) {
    // Beside the pointer, so that the mark can be seen.
    const auto picture = view_.viewport()->grab(cell);
    const auto most = kDraggedSize * picture.devicePixelRatio();
    drag->setPixmap(picture.width() <= most ? picture : picture.scaledToWidth(qRound(most), Qt::SmoothTransformation));
    drag->setHotSpot(kBesidePointer);
  }
  autoScroll_.start(kScrollMilliseconds, this);
  // No move: another program would take the image and leave what belongs to it behind.
  drag->exec(Qt::CopyAction | Qt::LinkAction, Qt::CopyAction);
  autoScroll_.stop();
  Show({});
}

void ThumbnailDrag::PaintMark(QPainter& painter) const {
  if (place_.position < 0) return;
  painter.fillRect(place_.mark, platform::ui::AccentFor(view_.viewport()->palette().color(QPalette::Base)));
}

bool ThumbnailDrag::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop: {
      auto& drop = static_cast<QDropEvent&>(*event);
      if (!platform::ui::IsInternalDrag(*drop.mimeData())) break;
      event->type() == QEvent::Drop ? Drop(drop) : Hover(drop);
      return true;
    }
    case QEvent::DragLeave:
      Show({});
      break;
    default:
      break;
  }
  return QObject::eventFilter(watched, event);
}

/// The pointer is beside the list more often than not when the list is to scroll, so no event of the list tells.
void ThumbnailDrag::timerEvent(QTimerEvent* event) {
  if (event->timerId() != autoScroll_.timerId()) return QObject::timerEvent(event);
  const QPoint pointer = view_.viewport()->mapFromGlobal(QCursor::pos());
  const auto scroll = [](QScrollBar& bar, int step) { bar.setValue(bar.value() + step); };
  scroll(*view_.verticalScrollBar(), AutoScrollStep(pointer.y(), 0, view_.viewport()->height()));
  scroll(*view_.horizontalScrollBar(), AutoScrollStep(pointer.x(), 0, view_.viewport()->width()));
  if (place_.position >= 0) Show(PlaceAt(pointer));
}

void ThumbnailDrag::Hover(QDropEvent& event) {
  const auto place = PlaceAt(event.position().toPoint());
  Show(place);
  if (place.position < 0) return event.ignore();
  event.setDropAction(Qt::CopyAction);
  event.accept();
}

void ThumbnailDrag::Drop(QDropEvent& event) {
  const auto place = PlaceAt(event.position().toPoint());
  Show({});
  if (place.position < 0) return event.ignore();
  event.setDropAction(Qt::CopyAction);
  event.accept();
  Q_EMIT moveWanted(place.position);
}

DropPlace ThumbnailDrag::PlaceAt(const QPoint& pointer) const {
  if (list_.Empty()) return {};
  const auto over = [&](const QModelIndex& item, const QPoint& at) {
    return DropPlaceOver({.index = item.row(),
                          .cell = view_.visualRect(item),
                          .selected = list_.marks[static_cast<std::size_t>(item.row())].selected,
                          .oneInLine = OneInLine()},
                         at);
  };
  if (const QModelIndex item = view_.indexAt(pointer); item.isValid()) return over(item, pointer);
  // Right of a line, or below the last one: behind what stands there.
  const QModelIndex before = LastInLineOf(pointer);
  auto place = over(before, view_.visualRect(before).bottomRight());
  place.position = before.row() + 1;
  return place;
}

QModelIndex ThumbnailDrag::LastInLineOf(const QPoint& pointer) const {
  const int step = std::max(view_.gridSize().width() / 2, 1);
  for (int x = std::min(pointer.x(), view_.viewport()->width()); x > 0; x -= step) {
    if (const QModelIndex item = view_.indexAt({x, pointer.y()}); item.isValid()) return item;
  }
  return view_.model()->index(list_.Count() - 1, 0);
}

bool ThumbnailDrag::OneInLine() const {
  return view_.flow() == QListView::LeftToRight && view_.viewport()->width() < 2 * view_.gridSize().width();
}

void ThumbnailDrag::Show(const DropPlace& place) {
  if (place.position == place_.position && place.mark == place_.mark) return;
  view_.viewport()->update(place_.mark);
  place_ = place;
  view_.viewport()->update(place_.mark);
}

}  // namespace ml::catalogue::ui
