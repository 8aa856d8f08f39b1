#include "batch/rename_image.h"

#include "batch/messages.h"
#include "imagefiles/eos1d_test.h"
#include "platform/errors.h"
#include "platform/paths.h"

namespace ml::batch {

RenameFacts FactsOf(const metadata::ExifData& data) {
  return {.focalLength = data.focalLength,
          .aperture = data.aperture,
          .shutterSpeed = data.shutterSpeed,
          .iso = data.iso,
          .bodySerial = data.bodySerial,
          .model = data.model,
          .imageNumber = data.imageNumber,
          .continuousFrame = data.continuousFrame,
          .stitchShot = data.stitchShot,
          .shootingTime = data.shootingTime};
}

std::vector<RenameImage> ReadRenameImages(const std::vector<std::string>& paths, const metadata::ExifOptions& options,
                                          platform::Progress& progress, const std::stop_token& stop) {
  progress.text(kReadingShootingData);
  std::vector<RenameImage> images;
  images.reserve(paths.size());
  for (const auto& path : paths) {
    if (stop.stop_requested()) throw platform::Cancelled();
    progress.secondText(ReadingImage(images.size() + 1, paths.size()));
    progress.position(static_cast<int>(images.size() + 1), static_cast<int>(paths.size()));
    progress.percent(static_cast<int>(images.size() * 100 / paths.size()));
    const bool isCanonRaw = platform::EndsWithNoCase(path, ".crw") || imagefiles::IsEos1DRawFile(path);
    images.push_back({std::string(platform::FileName(path)), FactsOf(metadata::ExifData(path, options)), isCanonRaw});
  }
  return images;
}

}  // namespace ml::batch
