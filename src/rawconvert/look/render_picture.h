#pragma once

#include <stop_token>

#include "imaging/pixel_buffer.h"
#include "rawconvert/look/colour_steps.h"
#include "rawconvert/look/picture_look.h"
#include "rawconvert/look/sensor_picture.h"

namespace ml::rawconvert {

struct RenderOrder {
  PictureLook look;
  SensorMatrix toSrgb{};  ///< from the sensor's white balanced colours
  float gain = 1;         ///< of the camera
  int bytesPerSample = 1;
};

/// The shown part as red, green and blue. All steps run row by row, on all processors. Throws Cancelled.
imaging::PixelBuffer RenderPicture(const SensorPicture& picture, const RenderOrder& order, const std::stop_token& stop);

}  // namespace ml::rawconvert
