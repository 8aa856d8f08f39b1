#include "rawconvert/libraw/crw_preview_balance.h"

#include <stdexcept>

#include "imaging/jpeg/jpeg_decoder.h"
#include "metadata/byte_source.h"
#include "metadata/crw_file.h"

namespace ml::rawconvert {
namespace {

constexpr int kGridColumns = 48, kGridRows = 32;
/// At which previews are compared with what the sensor saw.
constexpr int kPreviewWidth = 480, kPreviewHeight = 320;

}  // namespace

std::optional<WhiteBalanceCoefficients> BalanceOfCrwPreview(std::span<const std::byte> file,
                                                            const SensorSamples& samples, const SensorMatrix& toSrgb) {
  try {
    const metadata::MemorySource source(file);
    const auto range = metadata::FindCrwPreview(source);
    if (!range) return std::nullopt;
    const auto scale = [](int width, int height) {
      return imaging::LeastCoveringEighths(width, height, kPreviewWidth, kPreviewHeight);
    };
    const auto preview = imaging::DecodeJpeg(source, range->position, scale, imaging::PixelOrder::Rgb);
    if (preview.damaged) return std::nullopt;
    return BalanceOfPreview(MakeGrid(samples, kGridColumns, kGridRows), preview.pixels, toSrgb);
  } catch (const std::runtime_error&) {
    return std::nullopt;  // a preview that cannot be read is as good as none
  }
}

}  // namespace ml::rawconvert
