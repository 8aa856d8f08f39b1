#pragma once

#include <QSize>
#include <QString>
#include <QWidget>
#include <memory>
#include <string>
#include <vector>

#include "imaging/pixel_buffer.h"

namespace ml::app {

/// "RGB: %3d,%3d,%3d"
QString RgbText(QRgb colour);

/// The main display: one finished picture in the middle of a quiet ground, pixel for pixel, or a message.
class PictureView final : public QWidget {
  Q_OBJECT

 public:
  explicit PictureView(QWidget* parent = nullptr);

  /// Shows `picture` (one byte a sample), made to fit into PixelSize(); an empty one is none. `blink` is what Blink()
  /// changes to, of the same size; null or empty if nothing blinks.
  void SetPicture(std::shared_ptr<const imaging::PixelBuffer> picture,
                  std::shared_ptr<const imaging::PixelBuffer> blink = nullptr);
  void SetPicture(imaging::PixelBuffer&& picture);
  /// Changes between the picture and the one that it blinks with; that does not reach the read-out.
  void Blink();
  /// Takes the picture away; the message shows.
  void Clear();
  /// Shown without a picture; shown as it stands.
  void SetMessage(const QString& text);
  /// The room for a picture, in pixels of the screen.
  QSize PixelSize() const;
  QSize minimumSizeHint() const override;

 Q_SIGNALS:
  /// The read-out under the mouse; empty when it is off the picture.
  void colourUnderMouse(const QString& text);
  /// PixelSize() changed: a picture of the new size is wanted. Sent once the size rests.
  void pixelSizeChanged();
  /// Notches, positive away from the user.
  void wheelTurned(int notches, Qt::KeyboardModifiers modifiers);
  void doubleClicked();
  void contextMenuWanted(const QPoint& globalPosition);
  void pathsDropped(const std::vector<std::string>& paths);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  QRectF PlaceOfPicture() const;
  void TellColourAt(const QPointF& position);
  void WatchPixelSize();
  void DrawContent(QPainter& painter);

  std::shared_ptr<const imaging::PixelBuffer> picture_;  ///< never null
  std::shared_ptr<const imaging::PixelBuffer> blink_;    ///< never null
  bool blinked_ = false;                                 ///< `blink_` shows
  QString message_;
  QSize toldSize_;
  bool ringed_ = false;  ///< the keyboard brought the focus here
  int wheelRest_ = 0;    ///< eighths of a degree short of a notch
  class QTimer* sizeRests_;
};

}  // namespace ml::app
