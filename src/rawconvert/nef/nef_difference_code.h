#pragma once

#include <array>
#include <cstdint>

namespace ml::rawconvert {

/// The codes by which compressed data tell differences of samples.
enum class NefCode { Lossy, LossyAfterSplit, Lossless };

/// The bits that a code begins with say how many bits of difference follow.
class NefDifferenceCode {
 public:
  static constexpr int kLongest = 10;  ///< bits of a code

  struct Step {
    std::uint8_t codeBits = 0;  ///< 0: no such code
    std::uint8_t bits = 0;      ///< of the difference, those left out among them
    std::uint8_t dropped = 0;   ///< lowest bits that the data leave out
  };

  explicit NefDifferenceCode(NefCode code);
  /// By the next kLongest bits of the data.
  const Step& Find(std::uint32_t ahead) const { return steps_[ahead]; }

  /// The difference of a step from the bits that follow its code. Negative ones are told by a first bit of 0; of bits
  /// left out the middle of their range is taken.
  static int Difference(const Step& step, std::uint32_t bits) {
    if (step.bits == 0) return 0;
    const int span = 1 << step.bits;
    int value = static_cast<int>(bits << step.dropped);
    if (step.dropped > 0) value += 1 << (step.dropped - 1);
    if (value >= span / 2) return value;
    return value - span + (step.dropped == 0 ? 1 : 0);
  }

 private:
  std::array<Step, 1 << kLongest> steps_{};
};

}  // namespace ml::rawconvert
