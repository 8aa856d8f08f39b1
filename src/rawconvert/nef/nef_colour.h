#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "rawconvert/nef/nef_settings.h"
#include "rawconvert/nef/nef_white_balance.h"

namespace ml::rawconvert {

/// The last steps of a development, pixel by pixel: white balance, saturation, and gamma to 16 bits.
class NefColour {
 public:
  NefColour(const NefSettings& settings, const NefMultipliers& multipliers);

  /// Red, green and blue of pixels, not below 0, all of one length of at most kMaxRun; `out` has three samples a
  /// pixel, with `step` samples from one pixel to the next.
  void Apply(std::span<const std::int16_t> red, std::span<const std::int16_t> green, std::span<const std::int16_t> blue,
             std::uint16_t* out, std::size_t step) const;

  static constexpr std::size_t kMaxRun = 128;

 private:
  using Levels = std::array<std::array<float, kMaxRun>, 3>;
  void Saturate(Levels& levels, std::size_t count) const;

  float redMultiplier_, blueMultiplier_;
  float saturationFactor_;  ///< 1: colours stay
  std::vector<std::uint16_t> gamma_;
};

}  // namespace ml::rawconvert
