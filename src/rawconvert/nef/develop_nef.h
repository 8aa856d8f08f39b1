#pragma once

#include "imaging/decoded_picture.h"
#include "imaging/pixel_buffer.h"
#include "rawconvert/develop_watch.h"
#include "rawconvert/nef/nef_sensor.h"
#include "rawconvert/nef/nef_settings.h"
#include "rawconvert/nef/nef_white_balance.h"

namespace ml::rawconvert {

/// The picture in red, green and blue, two bytes a sample: two pixels less than the sensor on each side; D1X pictures
/// are brought to square pixels. Tells of progress from 20 to 100. Throws platform::Cancelled on a stop request;
/// several threads may develop from one sensor.
imaging::PixelBuffer DevelopNef(const NefSensor& sensor, const NefSettings& settings, const DevelopWatch& watch = {});

/// Of what DevelopNefSmall gives: half of the sensor without its border; not brought to square pixels.
imaging::PictureSize SmallNefSize(const NefSensor& sensor);
/// A quick picture for previews, each pixel from the four sites of a cell, one byte a sample. Throws as above.
imaging::PixelBuffer DevelopNefSmall(const NefSensor& sensor, const NefSettings& settings,
                                     const DevelopWatch& watch = {});

}  // namespace ml::rawconvert
