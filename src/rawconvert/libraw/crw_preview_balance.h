#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include "rawconvert/libraw/sensor_samples.h"

namespace ml::rawconvert {

/// BalanceOfPreview() with the preview that lies in a CRW file beside the samples of a sensor of three colours; `file`
/// is the whole of it. Nothing for other files and where the preview cannot be read.
std::optional<WhiteBalanceCoefficients> BalanceOfCrwPreview(std::span<const std::byte> file,
                                                            const SensorSamples& samples, const SensorMatrix& toSrgb);

}  // namespace ml::rawconvert
