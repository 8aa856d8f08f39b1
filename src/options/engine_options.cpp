#include "options/engine_options.h"

#include <algorithm>

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

}  // namespace ml::options
