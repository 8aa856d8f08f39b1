#pragma once

#include <mutex>
#include <optional>
#include <string>

#include "imagefiles/image_file_options.h"
#include "platform/companion_set.h"
#include "platform/dir_index.h"

namespace ml::imagefiles {

/// Finds the companions of image files, each by what its format may have. Keeps the index of the directory it
/// looked into last. May be used by several threads at once.
class CompanionFinder {
 public:
  explicit CompanionFinder(const ImageFileOptions& options) : options_(options) {}
  /// Full paths; a ".jpg" is among them only if it is the bound viewing JPEG of an EOS-1D raw file.
  platform::CompanionSet Find(const std::string& path);

 private:
  const ImageFileOptions options_;
  std::mutex lock_;
  std::optional<platform::DirIndex> index_;
};

}  // namespace ml::imagefiles
