#include "metadata/edit/exif_thumbnail.h"

#include <utility>

namespace ml::metadata {
namespace {

constexpr int kBestQuality = 90, kWorstQuality = 50, kQualityStep = 5;

}  // namespace

bool ReplaceThumbnail(ExifSegment& segment, const ThumbnailMaker& make) {
  auto edited = segment;
  if (!edited.HasThumbnail() && !edited.AddThumbnailDirectory()) return false;
  for (int quality = kBestQuality; quality >= kWorstQuality; quality -= kQualityStep) {
    const auto jpeg = make(quality);
    if (jpeg.empty()) return false;
    if (!edited.SetThumbnail(jpeg)) continue;
    segment = std::move(edited);
    return true;
  }
  return false;
}

}  // namespace ml::metadata
