#pragma once

#include <cstdint>
#include <functional>
#include <stop_token>
#include <string>
#include <vector>

#include "metadata/exif_data.h"
#include "platform/progress.h"

namespace ml::batch {

/// What the tokens of a style tell of an image; texts and numbers as in metadata::ExifData.
struct RenameFacts {
  double focalLength = 0;
  std::string aperture, shutterSpeed, iso, bodySerial, model;
  std::int32_t imageNumber = 0, continuousFrame = 0, stitchShot = 0;
  std::int64_t shootingTime = 0;
};
RenameFacts FactsOf(const metadata::ExifData& data);

/// An image that is to get another name.
struct RenameImage {
  std::string name;  ///< without directory
  RenameFacts facts;
  bool isCanonRaw = false;  ///< of a kind whose names the camera's programs limit
};

/// From so many images on, the reading belongs on a thread of its own, with a progress window.
inline constexpr std::size_t kReadWithProgress = 51;

/// Reads the shooting data of the files `paths`, in that order. `progress` is told the texts and numbers. A file that
/// cannot be read knows nothing of itself. Throws Cancelled after a stop request. For any thread.
std::vector<RenameImage> ReadRenameImages(const std::vector<std::string>& paths, const metadata::ExifOptions& options,
                                          platform::Progress& progress, const std::stop_token& stop);

}  // namespace ml::batch
