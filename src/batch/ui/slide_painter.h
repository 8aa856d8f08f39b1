#pragma once

#include <QFont>
#include <QRect>
#include <string>
#include <vector>

#include "imagefiles/display_picture.h"

class QPainter;
class QWidget;

namespace ml::batch::ui {

/// What PaintSlide() puts on a screen that is black already.
struct SlideContent {
  const imagefiles::DisplayPicture* picture = nullptr;  ///< made for this screen; null: none
  const std::vector<std::string>* lines = nullptr;      ///< of the caption, or with no picture of the whole screen
  bool captionBelow = false;
  bool tagged = false;
};

/// Height of one line of a caption, in logical pixels.
int CaptionLineHeight(const QFont& font);

/// Paints onto `widget`, pixel for pixel.
void PaintSlide(QPainter& painter, const QWidget& widget, const SlideContent& content);

}  // namespace ml::batch::ui
