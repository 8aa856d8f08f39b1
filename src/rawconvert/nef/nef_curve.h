#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "metadata/byte_source.h"
#include "rawconvert/nef/nef_difference_code.h"
#include "rawconvert/nef/nef_directory.h"

namespace ml::rawconvert {

/// What compressed data need to become samples.
struct NefCurve {
  /// What the differences begin with: [row parity][column parity].
  std::array<std::array<int, 2>, 2> predictors{};
  std::vector<std::uint16_t> values;  ///< sample of each coded value; not empty
  NefCode code = NefCode::Lossy;
  int splitRow = 0;  ///< from here on NefCode::LossyAfterSplit holds; 0: nowhere
};

/// From where the maker's note says, else from the place that the camera always puts it. Throws ExifException where
/// it is not in the file, NefError::Damaged where it cannot be true.
NefCurve ReadNefCurve(const metadata::ByteSource& source, const NefLayout& layout);

}  // namespace ml::rawconvert
