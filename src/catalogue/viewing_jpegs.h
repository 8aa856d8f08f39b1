#pragma once

#include <map>
#include <string>

#include "platform/dir_index.h"

namespace ml::catalogue {

/// Finds the raw files of the EOS-1D and the JPEGs beside them that are only there to view them. For one load:
/// each directory is seen as it was at the first question about it, each raw file is looked into once.
class ViewingJpegs {
 public:
  /// Whether `path` is an EOS-1D raw file.
  bool IsRaw(const std::string& path);
  /// The raw file for which the JPEG `path` stands; empty if it is an image of its own. Of two JPEGs whose names
  /// differ in case only, one belongs to the raw file, and the other does not.
  std::string RawOf(const std::string& path);

 private:
  platform::DirIndexes indexes_;
  std::map<std::string, bool> isRaw_;
};

}  // namespace ml::catalogue
