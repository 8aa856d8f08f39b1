#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "metadata/byte_source.h"
#include "rawconvert/develop_watch.h"
#include "rawconvert/nef/nef_camera.h"

namespace ml::rawconvert {

/// What the sensor recorded: one sample a site, `width` a row, top row first. Samples have 12 bits, brought to
/// proportion with the light where the file holds a curve for that. Kept by whoever develops a file several times.
struct NefSensor {
  NefCamera camera;
  int width = 0;
  int height = 0;
  std::vector<std::uint16_t> samples;

  const std::uint16_t* Row(int y) const {
    return samples.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
  }
};

/// Reads the raw data of a file, compressed or not; tells of progress from 0 to 20. Throws UserError naming `path`
/// where the camera is not known, the data are cut off or damaged, or sizes cannot be true.
NefSensor ReadNefSensor(const metadata::ByteSource& source, const std::string& path, const DevelopWatch& watch = {});
/// The same for the file at `path`.
NefSensor ReadNefSensor(const std::string& path, const DevelopWatch& watch = {});

}  // namespace ml::rawconvert
