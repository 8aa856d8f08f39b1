#include "catalogue/ui/thumbnail_delegate.h"

#include <QFontMetricsF>
#include <QPainter>
#include <cmath>

#include "catalogue/ui/caption.h"
#include "catalogue/ui/thumbnail_marks.h"
#include "imaging/ui/pixel_image.h"
#include "platform/paths.h"
#include "platform/ui/accent.h"
#include "platform/ui/qt_text.h"

namespace ml::catalogue::ui {
namespace {

constexpr int kTextMargin = 4;
constexpr int kTopMargin = 2;
constexpr int kFocusRing = 2;

/// Lines just inside `rect`, on whole pixels at every scale.
void DrawEdges(QPainter& painter, const QRect& rect, int width, const QColor& topLeft, const QColor& bottomRight) {
  painter.fillRect(rect.left(), rect.top(), rect.width(), width, topLeft);
  painter.fillRect(rect.left(), rect.top(), width, rect.height(), topLeft);
  painter.fillRect(rect.left(), rect.bottom() + 1 - width, rect.width(), width, bottomRight);
  painter.fillRect(rect.right() + 1 - width, rect.top(), width, rect.height(), bottomRight);
}

}  // namespace

/// What is painted, and with what.
struct ThumbnailDelegate::Cell {
  int row;
  QRect frame;
  QFontMetricsF metrics;
  bool listHasFocus;
  bool selected, focused, tagged;
  double pixelRatio;
  QColor textColour;  ///< of everything but the extension
};

ThumbnailDelegate::ThumbnailDelegate(const ThumbnailModel& model, QObject* parent)
    : QStyledItemDelegate(parent), model_(model), colours_(&SchemeColours("gray")) {}

void ThumbnailDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const int row = index.row();
  if (!index.isValid() || !model_.Has(row)) return;
  const auto marks = model_.Marks(row);
  const bool focused = model_.HasFocus(row);
  const bool listHasFocus = option.widget != nullptr && option.widget->hasFocus();
  // The colour of the focused item is made for the ground of a list that has the focus.
  const bool marked = marks.selected && focused && listHasFocus;
  const Cell cell{.row = row,
                  .frame = geometry_.Frame(option.rect),
                  .metrics = QFontMetricsF(option.font, painter->device()),
                  .listHasFocus = listHasFocus,
                  .selected = marks.selected,
                  .focused = focused,
                  .tagged = marks.tagged,
                  .pixelRatio = painter->device()->devicePixelRatioF(),
                  .textColour = marked ? colours_->selectedTextColour : colours_->defaultTextColour};
  painter->save();
  painter->setFont(option.font);
  DrawGround(*painter, cell);
  DrawTop(*painter, cell);
  DrawThumbnail(*painter, cell);
  DrawCaption(*painter, cell);
  DrawFocusRing(*painter, cell);
  painter->restore();
}

void ThumbnailDelegate::DrawGround(QPainter& painter, const Cell& cell) const {
  const auto& c = *colours_;
  const QColor selectedColour = cell.listHasFocus ? c.selectedFocusColour : c.selectedNoFocusColour;
  painter.fillRect(cell.frame, cell.selected ? selectedColour : c.unselectedColour);
  if (cell.selected) {
    DrawEdges(painter, cell.frame, 1, c.frameDarkColour, c.frameLightColour);
  } else {
    DrawEdges(painter, cell.frame, 1, c.frameLightColour, c.frameDarkColour);
  }
  if (cell.tagged && tagOutline_ > 0) {
    const QRect inFrame = cell.frame.adjusted(1, 1, -1, -1);
    DrawEdges(painter, inFrame, std::min(tagOutline_, 2), c.tagOutlineColour, c.tagOutlineColour);
  }
}

void ThumbnailDelegate::DrawTop(QPainter& painter, const Cell& cell) const {
  const auto& path = model_.Path(cell.row);
  const auto kind = KindOfFile(path);
  const QColor kindColour = kind.textColour != nullptr ? colours_->*kind.textColour : cell.textColour;
  const auto* item = model_.Item(cell.row);
  const double top = cell.frame.top() + kTopMargin;
  const QRectF leftMark(cell.frame.left() + kTextMargin, top + 1, kMarkSize, kMarkSize);
  if (item != nullptr && item->hasViewingJpeg) {
    DrawViewingJpegMark(painter, leftMark, kindColour);
  } else {
    const auto extension = platform::SplitPath(path).extension;
    painter.setPen(kindColour);
    painter.drawText(QPointF(leftMark.left(), top + cell.metrics.ascent()),
                     platform::ui::ToLabel(extension.substr(extension.empty() ? 0 : 1)));
  }
  if (item != nullptr && item->hasSound) {
    const double left = cell.frame.left() + (cell.frame.width() - kMarkSize) / 2.0;
    DrawSoundMark(painter, {left, top + 1, kMarkSize, kMarkSize}, cell.textColour);
  }
  if (cell.tagged) {
    const double left = cell.frame.right() + 1 - kTextMargin - kMarkSize;
    DrawTagMark(painter, {left, top + 1, kMarkSize, kMarkSize}, cell.textColour);
  }
}

void ThumbnailDelegate::DrawThumbnail(QPainter& painter, const Cell& cell) const {
  const auto state = model_.State(cell.row);
  if (state == ThumbnailState::ToDo) return;
  const auto* item = model_.Item(cell.row);
  const QRectF frame(cell.frame);
  if (item == nullptr || item->pixels.Empty()) {
    DrawFailureCross(painter, frame.center());
    return;
  }
  QImage image = imaging::ui::WrapPixels(item->pixels);
  if (blackAndWhite_) image = imaging::ui::MeanOfChannels(image);
  // Made for this scale factor or not: the thumbnail takes its place in the cell either way, and is only
  // interpolated while the new ones are on their way.
  const bool exact = std::abs(model_.MadeSize() - geometry_.thumbnailSize * cell.pixelRatio) < 1;
  image.setDevicePixelRatio(exact ? cell.pixelRatio : static_cast<double>(model_.MadeSize()) / geometry_.thumbnailSize);
  painter.setRenderHint(QPainter::SmoothPixmapTransform, !exact);
  painter.drawImage(CentredOnPixels(frame, image.deviceIndependentSize(), cell.pixelRatio), image);
}

void ThumbnailDelegate::DrawCaption(QPainter& painter, const Cell& cell) const {
  const auto width = [&](const std::string& text) {
    return cell.metrics.horizontalAdvance(platform::ui::ToLabel(text));
  };
  const auto caption = platform::ui::ToLabel(CutCaption(model_.Path(cell.row), cell.frame.width() - 4, width));
  const double left = cell.frame.left() + (cell.frame.width() - cell.metrics.horizontalAdvance(caption)) / 2;
  painter.setPen(cell.textColour);
  painter.drawText(QPointF(left, cell.frame.bottom() - 1 - cell.metrics.descent()), caption);
}

void ThumbnailDelegate::DrawFocusRing(QPainter& painter, const Cell& cell) const {
  if (!cell.focused) return;
  const QColor background = colours_->backgroundColour;
  const QColor quiet = platform::ui::RelativeLuminance(background) > 0.18 ? QColor(90, 90, 90) : QColor(150, 150, 150);
  const QColor colour = cell.listHasFocus ? platform::ui::AccentFor(background) : quiet;
  const QRect ring = cell.frame.adjusted(-kFocusRing, -kFocusRing, kFocusRing, kFocusRing);
  DrawEdges(painter, ring, kFocusRing, colour, colour);
}

}  // namespace ml::catalogue::ui
