#include "app/picture_view.h"

#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QTimer>
#include <cmath>

#include "app/theme.h"
#include "imaging/ui/pixel_image.h"
#include "platform/ui/accent.h"
#include "platform/ui/path_drop_target.h"

namespace ml::app {
namespace {

constexpr int kMessageMargin = 16;
/// Within the room that pictures leave free at the edges of the pane.
constexpr int kFocusRing = 2;
constexpr int kWheelNotch = 120;
/// While a splitter moves, nothing is decoded anew.
constexpr int kSizeRests = 120;

}  // namespace

QString RgbText(QRgb colour) {
  return QString::asprintf("RGB: %3d,%3d,%3d", qRed(colour), qGreen(colour), qBlue(colour));
}

PictureView::PictureView(QWidget* parent)
    : QWidget(parent),
      picture_(std::make_shared<const imaging::PixelBuffer>()),
      blink_(picture_),
      sizeRests_(new QTimer(this)) {
  setAccessibleName(QStringLiteral("Picture"));
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setAttribute(Qt::WA_OpaquePaintEvent);
  sizeRests_->setSingleShot(true);
  sizeRests_->setInterval(kSizeRests);
  connect(sizeRests_, &QTimer::timeout, this, &PictureView::pixelSizeChanged);
  auto* drops = new platform::ui::PathDropTarget(this);
  connect(drops, &platform::ui::PathDropTarget::pathsDropped, this, &PictureView::pathsDropped);
}

void PictureView::SetPicture(std::shared_ptr<const imaging::PixelBuffer> picture,
                             std::shared_ptr<const imaging::PixelBuffer> blink) {
  picture_ = std::move(picture);
  blink_ = blink ? std::move(blink) : std::make_shared<const imaging::PixelBuffer>();
  blinked_ = false;
  update();
  TellColourAt(mapFromGlobal(QCursor::pos()));
}

void PictureView::SetPicture(imaging::PixelBuffer&& picture) {
  SetPicture(std::make_shared<const imaging::PixelBuffer>(std::move(picture)));
}

void PictureView::Clear() { SetPicture(imaging::PixelBuffer()); }

void PictureView::Blink() {
  if (blink_->Empty()) return;
  blinked_ = !blinked_;
  update();
}

void PictureView::SetMessage(const QString& text) {
  message_ = text;
  setAccessibleDescription(text);
  update();
}

QSize PictureView::PixelSize() const {
  const QSizeF pixels = QSizeF(size()) * devicePixelRatioF();
  return {static_cast<int>(std::floor(pixels.width())), static_cast<int>(std::floor(pixels.height()))};
}

QSize PictureView::minimumSizeHint() const { return {150, 150}; }

/// In logical pixels. A picture made for a larger pane is drawn smaller until its successor arrives; none is
/// ever drawn larger.
QRectF PictureView::PlaceOfPicture() const {
  const double ratio = devicePixelRatioF();
  QSizeF place = QSizeF(picture_->width, picture_->height) / ratio;
  if (place.width() > width() || place.height() > height()) place.scale(size(), Qt::KeepAspectRatio);
  const auto onPixel = [&](double value) { return std::floor(value * ratio) / ratio; };
  return {QPointF(onPixel((width() - place.width()) / 2), onPixel((height() - place.height()) / 2)), place};
}

void PictureView::paintEvent(QPaintEvent*) {
  WatchPixelSize();
  QPainter painter(this);
  painter.fillRect(rect(), PictureGround());
  DrawContent(painter);
  if (!ringed_) return;
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(
      QPen(platform::ui::AccentFor(PictureGround()), kFocusRing, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
  painter.drawRect(rect().adjusted(1, 1, -1, -1));
}

void PictureView::DrawContent(QPainter& painter) {
  if (picture_->Empty()) {
    painter.setPen(PictureGroundText());
    const QRect area = rect().marginsRemoved({kMessageMargin, kMessageMargin, kMessageMargin, kMessageMargin});
    painter.drawText(area, Qt::AlignCenter | Qt::TextWordWrap, message_);
    return;
  }
  const QRectF place = PlaceOfPicture();
  const bool unscaled = std::abs(place.width() * devicePixelRatioF() - picture_->width) < 0.5;
  painter.setRenderHint(QPainter::SmoothPixmapTransform, !unscaled);
  QImage image = imaging::ui::WrapPixels(blinked_ ? *blink_ : *picture_);
  if (unscaled) {
    image.setDevicePixelRatio(devicePixelRatioF());
    painter.drawImage(place.topLeft(), image);
  } else {
    painter.drawImage(place, image);
  }
}

void PictureView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  WatchPixelSize();
}

/// Called when painting too: a move to another screen changes the scale without a resize.
void PictureView::WatchPixelSize() {
  if (toldSize_ == PixelSize()) return;
  toldSize_ = PixelSize();
  sizeRests_->start();
}

void PictureView::mouseMoveEvent(QMouseEvent* event) { TellColourAt(event->position()); }

void PictureView::leaveEvent(QEvent*) { Q_EMIT colourUnderMouse({}); }

void PictureView::TellColourAt(const QPointF& position) {
  if (picture_->Empty() || !rect().contains(position.toPoint())) {
    Q_EMIT colourUnderMouse({});
    return;
  }
  const QRectF place = PlaceOfPicture();
  const QPointF inside = position - place.topLeft();
  const int x = static_cast<int>(std::floor(inside.x() * picture_->width / place.width()));
  const int y = static_cast<int>(std::floor(inside.y() * picture_->height / place.height()));
  const bool onPicture = QRect(0, 0, picture_->width, picture_->height).contains(x, y);
  Q_EMIT colourUnderMouse(onPicture ? RgbText(imaging::ui::WrapPixels(*picture_).pixel(x, y)) : QString());
}

/// The ring is for those who go from pane to pane by key; nobody else needs to be told.
void PictureView::focusInEvent(QFocusEvent* event) {
  ringed_ = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
  update();
}

void PictureView::focusOutEvent(QFocusEvent*) {
  ringed_ = false;
  update();
}

void PictureView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) Q_EMIT doubleClicked();
}

void PictureView::wheelEvent(QWheelEvent* event) {
  const QPoint delta = event->angleDelta();
  // With Alt the toolkit hands a vertical wheel over as a horizontal one.
  wheelRest_ += delta.y() != 0 ? delta.y() : delta.x();
  const int notches = wheelRest_ / kWheelNotch;
  wheelRest_ -= notches * kWheelNotch;
  if (notches != 0) Q_EMIT wheelTurned(notches, event->modifiers());
  event->accept();
}

void PictureView::contextMenuEvent(QContextMenuEvent* event) { Q_EMIT contextMenuWanted(event->globalPos()); }

}  // namespace ml::app
