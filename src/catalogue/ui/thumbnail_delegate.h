#pragma once

#include <QStyledItemDelegate>

#include "catalogue/ui/thumbnail_cell.h"
#include "catalogue/ui/thumbnail_colours.h"
#include "catalogue/ui/thumbnail_model.h"

namespace ml::catalogue::ui {

/// Draws one cell of the thumbnail list. State is always shown by shape as well as colour: frame raised or
/// sunken, a mark and an outline for tags, a ring for the focus.
class ThumbnailDelegate final : public QStyledItemDelegate {
  Q_OBJECT

 public:
  ThumbnailDelegate(const ThumbnailModel& model, QObject* parent);

  void SetGeometry(const CellGeometry& geometry) { geometry_ = geometry; }
  const CellGeometry& Geometry() const { return geometry_; }
  void SetColours(const ThumbnailColours& colours) { colours_ = &colours; }
  const ThumbnailColours& Colours() const { return *colours_; }
  /// Width of the line around tagged items in pixels, 0..2.
  void SetTagOutline(int width) { tagOutline_ = width; }
  void SetBlackAndWhite(bool on) { blackAndWhite_ = on; }

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override { return geometry_.CellSize(); }

 private:
  struct Cell;
  void DrawGround(QPainter& painter, const Cell& cell) const;
  void DrawTop(QPainter& painter, const Cell& cell) const;
  void DrawThumbnail(QPainter& painter, const Cell& cell) const;
  void DrawCaption(QPainter& painter, const Cell& cell) const;
  void DrawFocusRing(QPainter& painter, const Cell& cell) const;

  const ThumbnailModel& model_;
  const ThumbnailColours* colours_;
  CellGeometry geometry_;
  int tagOutline_ = 1;
  bool blackAndWhite_ = false;
};

}  // namespace ml::catalogue::ui
