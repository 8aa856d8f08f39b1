#pragma once

#include <cstdint>

#include "imaging/pixel_buffer.h"

namespace ml::imagefiles {

/// The clockwise degrees of a turn: 90, 180, 270 or 0.
int DegreesOf(imaging::Turn turn);

/// The value of tag 274 for a picture that had `present` and is turned on. Anything but 3, 6 and 8 counts as upright.
std::uint32_t TurnedOrientation(std::uint32_t present, imaging::Turn turn);

}  // namespace ml::imagefiles
