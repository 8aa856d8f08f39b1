#include "rawconvert/nef/nef_bits.h"
#include "rawconvert/nef/nef_error.h"
#include "rawconvert/nef/nef_samples.h"

namespace ml::rawconvert {
namespace {

constexpr int kBits = 12;
constexpr int kTen = 10;
constexpr int kTenBytes = 16;
constexpr int kByte = 8;

}  // namespace

std::uint64_t PackedNefSize(const NefPacking& packing, int height) {
  const auto samples = static_cast<std::uint64_t>(packing.rowSamples), rows = static_cast<std::uint64_t>(height);
  return packing.tensWithByte ? samples / kTen * kTenBytes * rows : (samples * rows * kBits + 7) / 8;
}

std::vector<std::uint16_t> DecodePackedNef(metadata::ByteView data, const NefGrid& grid, const NefPacking& packing,
                                           const RowWatch& row) {
  if (data.Size() < PackedNefSize(packing, grid.height)) throw NefError::Cut;
  std::vector<std::uint16_t> samples;
  samples.reserve(static_cast<std::size_t>(grid.width) * static_cast<std::size_t>(grid.height));
  NefBits bits(data.Bytes());
  for (int y = 0; y < grid.height; ++y) {
    row(y, grid.height);
    for (int x = 0; x < packing.rowSamples; ++x) {
      const auto sample = static_cast<std::uint16_t>(bits.Take(kBits));
      if (x < grid.width) samples.push_back(sample);
      if (packing.tensWithByte && x % kTen == kTen - 1) bits.Take(kByte);
    }
  }
  return samples;
}

}  // namespace ml::rawconvert
