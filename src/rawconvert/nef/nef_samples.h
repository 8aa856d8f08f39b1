#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "metadata/byte_view.h"
#include "rawconvert/nef/nef_curve.h"

/// Raw data to samples. All throw NefError where the data end too early or cannot be true; `row` is told of each row
/// before it is decoded and may end the work with an exception.
namespace ml::rawconvert {

struct NefGrid {
  int width = 0;   ///< samples of a row that are kept
  int height = 0;  ///< rows
};

using RowWatch = std::function<void(int row, int rows)>;

/// Differences in a row from the site two columns before; the first two from those of the row two above.
std::vector<std::uint16_t> DecodeCompressedNef(metadata::ByteView data, const NefGrid& grid, const NefCurve& curve,
                                               const RowWatch& row);

/// How samples of 12 bits stand one behind another.
struct NefPacking {
  int rowSamples = 0;         ///< of a row in the file, those that are not kept among them
  bool twoFields = false;     ///< the even rows stand before the odd ones
  bool tensWithByte = false;  ///< a byte of zero follows each ten samples; a row has whole tens
};
/// Bytes that such data have.
std::uint64_t PackedNefSize(const NefPacking& packing, int height);
std::vector<std::uint16_t> DecodePackedNef(metadata::ByteView data, const NefGrid& grid, const NefPacking& packing,
                                           const RowWatch& row);

}  // namespace ml::rawconvert
