#pragma once

#include <cstdint>
#include <vector>

namespace ml::rawconvert {

inline constexpr int kCurveSteps = 65536;

/// From light, 0 to the sensor's limit in kCurveSteps steps, to samples of 16 bits as they are shown. `contrast` is a
/// level -2..2: the middle greys become steeper about their centre, white and black stay.
std::vector<std::uint16_t> MakeToneCurve(double contrast);

}  // namespace ml::rawconvert
