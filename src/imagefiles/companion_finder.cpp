#include "imagefiles/companion_finder.h"

#include "imagefiles/eos1d_test.h"
#include "imagefiles/format_table.h"
#include "platform/paths.h"

namespace ml::imagefiles {

platform::CompanionSet CompanionFinder::Find(const std::string& path) {
  const std::lock_guard guard(lock_);
  const auto directory = platform::DirectoryOf(path);
  if (!index_ || index_->Directory() != directory) index_.emplace(std::string(directory));
  const auto* format = FindFormat(path);
  // Reading the raw file comes last: most have no JPEG beside them.
  const bool bound = options_.bindJpegToEos1DRaw && platform::EndsWithNoCase(path, ".tif") &&
                     !platform::FindCompanion(path, ".jpg", *index_).empty() && catalogueEos1D(path);
  return platform::FindCompanions(path, {.hasThm = format != nullptr && format->hasThm, .hasBoundJpeg = bound},
                                  *index_);
}

}  // namespace ml::imagefiles
