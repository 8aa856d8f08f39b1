#pragma once

#include <QBasicTimer>
#include <QListView>

#include "catalogue/image_list.h"
#include "catalogue/ui/drop_place.h"

class QDropEvent;
class QPainter;

namespace ml::catalogue::ui {

/// Lets the selected thumbnails of a list be dragged: to another place in the list, where a mark shows between
/// which entries they would go, or to other programs as files to copy. View and list outlive it.
class ThumbnailDrag final : public QObject {
  Q_OBJECT

 public:
  ThumbnailDrag(QListView& view, const ImageList& list);

  /// Runs until the thumbnails are dropped. Does nothing without a selection.
  void Start();
  void PaintMark(QPainter& painter) const;

 Q_SIGNALS:
  /// The selected entries go before the entry at `position`, or behind the last one.
  void moveWanted(int position);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  void Hover(QDropEvent& event);
  void Drop(QDropEvent& event);
  DropPlace PlaceAt(const QPoint& pointer) const;
  QModelIndex LastInLineOf(const QPoint& pointer) const;
  bool OneInLine() const;
  void Show(const DropPlace& place);

  QListView& view_;
  const ImageList& list_;
  DropPlace place_;
  QBasicTimer autoScroll_;
};

}  // namespace ml::catalogue::ui
