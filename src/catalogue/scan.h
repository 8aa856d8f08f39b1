#pragma once

#include <string>
#include <vector>

namespace ml::catalogue {

/// What a load did not take, for telling why a list is short or empty.
struct LeftOut {
  int hiddenImages = 0;     ///< images whose names begin with "."
  int otherFiles = 0;       ///< visible files that are no images, companions among them
  int boundJpegs = 0;       ///< JPEGs for which a raw file stands
  int longNames = 0;        ///< raw files whose names are too long
  bool unreadable = false;  ///< the directory could not be read, or not to its end
};

struct ScanOptions {
  bool showHidden = false;
  bool bindJpegToEos1DRaw = true;
};

/// Full paths of the images in `directory`, ascending by name without regard to case. Only files with content
/// are taken, also through links; a FIFO or device is not touched. Opens no file.
std::vector<std::string> ScanDirectory(const std::string& directory, const ScanOptions& options, LeftOut& leftOut);

/// Those of `paths` that can be images of the catalogue, made absolute, each once, in the given order.
std::vector<std::string> ExistingImages(const std::vector<std::string>& paths, const ScanOptions& options,
                                        LeftOut& leftOut);

struct FilteredImages {
  std::vector<std::string> kept;
  std::vector<std::string> longNames;  ///< refused because of their names
};

/// Takes out viewing JPEGs and raw files with long names from images found by one of the above.
FilteredImages FilterImages(std::vector<std::string> images, const ScanOptions& options, LeftOut& leftOut);

}  // namespace ml::catalogue
