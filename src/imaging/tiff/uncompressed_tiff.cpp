#include "imaging/tiff/uncompressed_tiff.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "imaging/tiff/messages.h"
#include "metadata/tiff_facts.h"
#include "platform/errors.h"

namespace ml::imaging {
namespace {

using metadata::TiffFacts;
using platform::UserError;

constexpr std::uint32_t kNoCompression = 1, kWhiteIsZero = 0, kBlackIsZero = 1, kRgb = 2, kSeparatePlanes = 2;
constexpr std::uint32_t kMaxSamples = 16;

void Check(const TiffFacts& facts) {
  if (facts.compression != kNoCompression) throw UserError(messages::kTiffCompressed);
  if (facts.bitsPerSample.empty()) throw UserError(messages::kTiffBitsSeek);
  const auto bits = facts.bitsPerSample.front();
  const bool same = std::ranges::all_of(facts.bitsPerSample, [&](std::uint32_t other) { return other == bits; });
  if (!same || (bits != 8 && bits != 16)) throw UserError(messages::kTiffBits);
  const bool grey = facts.photometric == kWhiteIsZero || facts.photometric == kBlackIsZero;
  const bool rgb = facts.photometric == kRgb && facts.samplesPerPixel >= 3;
  const bool samples = facts.samplesPerPixel >= 1 && facts.samplesPerPixel <= kMaxSamples;
  if ((!grey && !rgb) || !samples || facts.tiled) throw UserError(messages::kTiffColours);
  constexpr std::uint32_t most = std::numeric_limits<int>::max();
  const bool size = facts.width != 0 && facts.height != 0 && facts.width <= most && facts.height <= most;
  if (!size || static_cast<long long>(facts.width) * facts.height > kMaxPixelsWhole) {
    throw UserError(messages::kTiffSize);
  }
}

/// Where the samples of a picture stand in its strips and where they go.
class StripReader {
 public:
  StripReader(const metadata::ByteSource& source, const TiffFacts& facts)
      : source_(source),
        facts_(facts),
        sampleBytes_(facts.bitsPerSample.front() / 8),
        separate_(facts.planes == kSeparatePlanes && facts.samplesPerPixel > 1),
        stripSamples_(separate_ ? 1 : facts.samplesPerPixel),
        rowsPerStrip_(std::clamp(facts.rowsPerStrip, 1U, facts.height)),
        row_(static_cast<std::size_t>(facts.width) * stripSamples_ * sampleBytes_) {}

  PixelBuffer Read() {
    const std::size_t planes = separate_ ? Colours() : 1;
    // Before so much memory is asked for.
    if (row_.size() * facts_.height > source_.Size() / planes) throw UserError(messages::kTiffCut);
    auto pixels = MakePixelBuffer(static_cast<int>(facts_.width), static_cast<int>(facts_.height), PixelOrder::Rgb,
                                  static_cast<int>(sampleBytes_));
    const std::size_t stripsPerPlane = (facts_.height + rowsPerStrip_ - 1) / rowsPerStrip_;
    for (std::size_t plane = 0; plane < planes; ++plane) {
      for (std::uint32_t y = 0; y < facts_.height; ++y) {
        const auto strip = plane * stripsPerPlane + y / rowsPerStrip_;
        FetchRow(strip, y % rowsPerStrip_);
        auto* out = pixels.Row(static_cast<int>(y));
        if (separate_) {
          PutPlane(out, plane);
        } else {
          PutPixels(out);
        }
      }
    }
    return pixels;
  }

 private:
  std::size_t Colours() const { return facts_.photometric == kRgb ? 3 : 1; }

  void FetchRow(std::size_t strip, std::uint32_t rowInStrip) {
    if (strip >= facts_.stripOffsets.size()) throw UserError(messages::kTiffCut);
    const auto position = facts_.stripOffsets[strip] + static_cast<std::uint64_t>(rowInStrip) * row_.size();
    if (source_.ReadSome(position, row_) != row_.size()) throw UserError(messages::kTiffCut);
  }

  /// The sample at `index` of the row, in host order and with white as the highest value.
  void PutSample(std::byte* out, std::size_t index) const {
    const auto* in = row_.data() + index * sampleBytes_;
    const bool invert = facts_.photometric == kWhiteIsZero;
    if (sampleBytes_ == 1) {
      *out = invert ? ~*in : *in;
      return;
    }
    const auto value = metadata::ByteView({in, 2}, facts_.order).readShort(0);
    const auto stored = static_cast<std::uint16_t>(invert ? 0xffff - value : value);
    std::memcpy(out, &stored, sizeof stored);
  }

  void PutPixels(std::byte* out) const {
    const bool grey = Colours() == 1;
    for (std::size_t x = 0; x < facts_.width; ++x) {
      for (std::size_t c = 0; c < 3; ++c, out += sampleBytes_) PutSample(out, x * stripSamples_ + (grey ? 0 : c));
    }
  }

  void PutPlane(std::byte* out, std::size_t plane) const {
    for (std::size_t x = 0; x < facts_.width; ++x) {
      if (Colours() == 3) {
        PutSample(out + (x * 3 + plane) * sampleBytes_, x);
      } else {
        for (std::size_t c = 0; c < 3; ++c) PutSample(out + (x * 3 + c) * sampleBytes_, x);
      }
    }
  }

  const metadata::ByteSource& source_;
  const TiffFacts& facts_;
  std::size_t sampleBytes_;
  bool separate_;
  std::size_t stripSamples_;
  std::uint32_t rowsPerStrip_;
  std::vector<std::byte> row_;
};

}  // namespace

PixelBuffer ReadUncompressedTiff(const metadata::ByteSource& source) {
  const auto facts = metadata::ReadTiffFacts(source);
  if (!facts) throw UserError(messages::kTiffInvalid);
  Check(*facts);
  return StripReader(source, *facts).Read();
}

}  // namespace ml::imaging
