#pragma once

#include <memory>
#include <string>

#include "catalogue/thumbnail_thread.h"
#include "imagefiles/image_file_options.h"

namespace ml::catalogue {

/// Makes the worker's records: the thumbnail, and what lies beside the file. A ThumbnailMaker; copies share the
/// names of the directory that they looked into last.
class ImageItemMaker {
 public:
  explicit ImageItemMaker(const imagefiles::ImageFileOptions& options);
  /// Safe to call from several threads at once; never throws.
  ImageItem operator()(const std::string& path, int size) const;

 private:
  struct Neighbours;
  imagefiles::ImageFileOptions options_;
  std::shared_ptr<Neighbours> neighbours_;
};

}  // namespace ml::catalogue
