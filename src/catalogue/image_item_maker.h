#pragma once

#include <memory>
#include <string>
#include <utility>

#include "catalogue/thumbnail_thread.h"
#include "imagefiles/colour_options.h"
#include "imagefiles/companion_finder.h"
#include "imagefiles/image_file_options.h"

namespace ml::catalogue {

/// Makes the worker's records: the thumbnail in the colours of the monitor, and whether a sound note and a viewing JPEG
/// lie beside the file. A ThumbnailMaker; copies share the names of the directory that they looked into last.
class ImageItemMaker {
 public:
  explicit ImageItemMaker(const imagefiles::ImageFileOptions& options, imagefiles::ColourOptions colour = {})
      : options_(options),
        colour_(std::move(colour)),
        companions_(std::make_shared<imagefiles::CompanionFinder>(options)) {}
  /// May be called by several threads at once; never throws.
  ImageItem operator()(const std::string& path, int size) const;

 private:
  imagefiles::ImageFileOptions options_;
  imagefiles::ColourOptions colour_;
  std::shared_ptr<imagefiles::CompanionFinder> companions_;
};

}  // namespace ml::catalogue
