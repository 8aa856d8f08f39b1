#pragma once

#include <string>

#include "catalogue/thumbnail_thread.h"
#include "imagefiles/companion_finder.h"
#include "imagefiles/image_file_options.h"

namespace ml::catalogue {

/// Makes the worker's records: the thumbnail, and whether a sound note and a viewing JPEG lie beside the file.
/// May be called by several threads at once; never throws.
class ImageItemMaker {
 public:
  explicit ImageItemMaker(const imagefiles::ImageFileOptions& options) : options_(options), companions_(options) {}
  ImageItem Make(const std::string& path, int size);

 private:
  const imagefiles::ImageFileOptions options_;
  imagefiles::CompanionFinder companions_;
};

}  // namespace ml::catalogue
