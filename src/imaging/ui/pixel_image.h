#pragma once

#include <QImage>

#include "imaging/pixel_buffer.h"

namespace ml::imaging::ui {

/// `pixels` (one byte a sample) as an image of the toolkit that uses the same bytes: it must not outlive them.
/// The padding of the rows is left out. Null for an empty buffer.
QImage WrapPixels(const PixelBuffer& pixels);

/// A grey image of the plain mean of the three channels, cut to an integer. `image` has three bytes a pixel.
QImage MeanOfChannels(const QImage& image);

}  // namespace ml::imaging::ui
