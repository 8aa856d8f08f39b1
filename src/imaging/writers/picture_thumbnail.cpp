#include "imaging/writers/picture_thumbnail.h"

#include <algorithm>
#include <bit>

#include "imaging/decoded_picture.h"
#include "imaging/jpeg/jpeg_encoder.h"
#include "imaging/scale.h"
#include "platform/errors.h"

namespace ml::imaging {
namespace {

constexpr int kSide = 160;
/// Pixels looked at across each one of the thumbnail: more would not show.
constexpr int kLookedAt = 6;

PictureSize Fitted(int width, int height) {
  const int longest = std::max({width, height, kSide});
  const auto side = [&](int full) {
    return std::max(1, static_cast<int>(static_cast<long long>(full) * kSide / longest));
  };
  return {side(width), side(height)};
}

/// Pixels left out evenly, and single bytes.
PixelBuffer Sampled(const PixelRows& pixels, int width, int height) {
  const auto sample = static_cast<std::size_t>(pixels.bytesPerSample);
  const auto high = std::endian::native == std::endian::little ? sample - 1 : 0;
  auto out = MakePixelBuffer(width, height, pixels.order);
  for (int y = 0; y < height; ++y) {
    const auto* row = pixels.Row(static_cast<int>(static_cast<long long>(y) * pixels.height / height));
    auto* to = out.Row(y);
    for (int x = 0; x < width; ++x) {
      const auto* pixel =
          row + static_cast<std::size_t>(static_cast<long long>(x) * pixels.width / width) * pixels.PixelBytes();
      for (std::size_t c = 0; c < 3; ++c) *to++ = pixel[(pixels.channels == 3 ? c * sample : 0) + high];
    }
  }
  return out;
}

PixelBuffer Thumbnail(const PixelRows& pixels) {
  const auto size = Fitted(pixels.width, pixels.height);
  const int width = std::min(pixels.width, size.width * kLookedAt);
  const int height = std::min(pixels.height, size.height * kLookedAt);
  return ScaleAverage(Sampled(pixels, width, height), size.width, size.height);
}

}  // namespace

metadata::ThumbnailMaker ThumbnailOf(const PixelRows& pixels) {
  return [pixels, small = PixelBuffer()](int quality) mutable -> std::vector<std::byte> {
    try {
      if (small.Empty()) small = Thumbnail(pixels);
      return EncodeBareJpeg(small, quality);
    } catch (const platform::LibraryError&) {
      return {};  // the file is worth more than its thumbnail
    }
  };
}

}  // namespace ml::imaging
