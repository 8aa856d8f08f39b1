#pragma once

#include <cstddef>
#include <vector>

#include "rawconvert/nef/nef_sensor.h"

namespace ml::rawconvert {

/// The samples as they are, as a grey picture in the PGM format: 16 bits, the higher byte first, 65535 as white.
std::vector<std::byte> EncodePgm(const NefSensor& sensor);

}  // namespace ml::rawconvert
