#include "rawconvert/nef/nef_bits.h"
#include "rawconvert/nef/nef_error.h"
#include "rawconvert/nef/nef_samples.h"

namespace ml::rawconvert {
namespace {

constexpr int kBits = 12;
constexpr int kTen = 10;
constexpr int kTenBytes = 16;
constexpr int kByte = 8;

/// The row of the picture that a stored one is.
int OfFields(int stored, int height) {
  const int evenRows = (height + 1) / 2;
  return stored < evenRows ? 2 * stored : 2 * (stored - evenRows) + 1;
}

}  // namespace

std::uint64_t PackedNefSize(const NefPacking& packing, int height) {
  const auto samples = static_cast<std::uint64_t>(packing.rowSamples), rows = static_cast<std::uint64_t>(height);
  return packing.tensWithByte ? samples / kTen * kTenBytes * rows : (samples * rows * kBits + 7) / 8;
}

std::vector<std::uint16_t> DecodePackedNef(metadata::ByteView data, const NefGrid& grid, const NefPacking& packing,
                                           const RowWatch& row) {
  if (data.Size() < PackedNefSize(packing, grid.height)) throw NefError::Cut;
  const auto width = static_cast<std::size_t>(grid.width);
  std::vector<std::uint16_t> samples(width * static_cast<std::size_t>(grid.height));
  NefBits bits(data.Bytes());
  for (int stored = 0; stored < grid.height; ++stored) {
    row(stored, grid.height);
    auto* out =
        samples.data() + width * static_cast<std::size_t>(packing.twoFields ? OfFields(stored, grid.height) : stored);
    for (int x = 0; x < packing.rowSamples; ++x) {
      const auto sample = static_cast<std::uint16_t>(bits.Take(kBits));
      if (x < grid.width) out[x] = sample;
      if (packing.tensWithByte && x % kTen == kTen - 1) bits.Take(kByte);
    }
  }
  return samples;
}

}  // namespace ml::rawconvert
