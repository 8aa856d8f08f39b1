#include "options/engine_options.h"

#include <algorithm>

#include "platform/monitor_profile.h"

namespace ml::options {

catalogue::CatalogueOptions CatalogueOptionsOf(const settings::Settings& settings) {
  return {.showHidden = settings.catalogue.showHiddenDirectories != 0,
          .bindJpegToEos1DRaw = settings.catalogue.bindJpegToEos1DRaw != 0,
          .suppressOrderFile = settings.catalogue.suppressOrderFile != 0};
}

void TakeSortOrder(const settings::Settings& settings, catalogue::ImageList& list) {
  constexpr int kLast = static_cast<int>(catalogue::SortMethod::Custom);
  list.sortMethod = static_cast<catalogue::SortMethod>(std::clamp(settings.catalogue.sortMethod, 0, kLast));
  list.reverseSort = settings.catalogue.reverseSort != 0;
}

metadata::ExifOptions ExifOptionsOf(const settings::Settings& settings) {
  return {.useJpegExifOrientation = settings.catalogue.useJpegExifOrientation != 0,
          .iptcComments = settings.iptc.comments != 0};
}

imagefiles::ImageFileOptions ImageFileOptionsOf(const settings::Settings& settings) {
  return {.ignoreEmbeddedThumbnails = settings.catalogue.ignoreEmbeddedThumbnails != 0,
          .useJpegExifOrientation = settings.catalogue.useJpegExifOrientation != 0,
          .bindJpegToEos1DRaw = settings.catalogue.bindJpegToEos1DRaw != 0,
          .iptcComments = settings.iptc.comments != 0,
          .preserveModificationTime = settings.catalogue.preserveImageModificationTime != 0};
}

imagefiles::ColourOptions ColourOptionsOf(const settings::Settings& settings) {
  const auto& from = settings.colour;
  imagefiles::ColourOptions options;
  if (from.enableMonitorProfile != 0) {
    options.monitorProfile = from.monitorProfile.empty() ? platform::SystemMonitorProfile() : from.monitorProfile;
  }
  if (from.enableDefaultProfile != 0) options.defaultProfile = from.defaultProfile;
  options.readProfileFromExif = from.readProfileFromExif != 0;
  options.suppressThumbnails = from.suppressThumbnailColour != 0;
  return options;
}

}  // namespace ml::options
