#include <algorithm>
#include <array>

#include "rawconvert/nef/nef_bits.h"
#include "rawconvert/nef/nef_error.h"
#include "rawconvert/nef/nef_samples.h"

namespace ml::rawconvert {
namespace {

/// How far coded values may go astray where the code leaves bits out.
constexpr int kSplitTolerance = 16;

class Decoder {
 public:
  Decoder(metadata::ByteView data, const NefCurve& curve)
      : bits_(data.Bytes()), curve_(curve), predictors_(curve.predictors), code_(curve.code) {}

  void DecodeRow(int row, std::span<std::uint16_t> samples) {
    if (row != 0 && row == curve_.splitRow) {
      code_ = NefDifferenceCode(NefCode::LossyAfterSplit);
      tolerance_ = kSplitTolerance;
    }
    auto& above = predictors_[static_cast<std::size_t>(row & 1)];
    for (std::size_t i = 0; i < std::min<std::size_t>(2, samples.size()); ++i) above[i] += Difference();
    auto left = above;
    for (std::size_t column = 0; column < samples.size(); ++column) {
      auto& value = left[column & 1];
      if (column >= 2) value += Difference();
      samples[column] = Sample(value);
    }
    if (bits_.Overrun()) throw NefError::Cut;
  }

 private:
  int Difference() {
    const auto& step = code_.Find(bits_.Peek(NefDifferenceCode::kLongest));
    if (step.codeBits == 0) throw bits_.Overrun() ? NefError::Cut : NefError::Damaged;
    bits_.Skip(step.codeBits);
    return NefDifferenceCode::Difference(step, bits_.Take(step.bits - step.dropped));
  }

  std::uint16_t Sample(int value) const {
    const int last = static_cast<int>(curve_.values.size()) - 1;
    if (value < -tolerance_ || value > last + tolerance_) throw bits_.Overrun() ? NefError::Cut : NefError::Damaged;
    return curve_.values[static_cast<std::size_t>(std::clamp(value, 0, last))];
  }

  NefBits bits_;
  const NefCurve& curve_;
  std::array<std::array<int, 2>, 2> predictors_;
  NefDifferenceCode code_;
  int tolerance_ = 0;
};

}  // namespace

std::vector<std::uint16_t> DecodeCompressedNef(metadata::ByteView data, const NefGrid& grid, const NefCurve& curve,
                                               const RowWatch& row) {
  const auto width = static_cast<std::size_t>(grid.width);
  std::vector<std::uint16_t> samples(width * static_cast<std::size_t>(grid.height));
  Decoder decoder(data, curve);
  for (int y = 0; y < grid.height; ++y) {
    row(y, grid.height);
    decoder.DecodeRow(y, std::span(samples).subspan(static_cast<std::size_t>(y) * width, width));
  }
  return samples;
}

}  // namespace ml::rawconvert
