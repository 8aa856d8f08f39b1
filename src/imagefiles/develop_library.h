#pragma once

#include <string>

#include "imaging/pixel_buffer.h"

namespace ml::imagefiles {

/// What develops raw files, for those who edit them. Made by whoever starts the program; where there is none, edits
/// that need it refuse.
class DevelopLibrary {
 public:
  virtual ~DevelopLibrary() = default;
  DevelopLibrary(const DevelopLibrary&) = delete;
  DevelopLibrary& operator=(const DevelopLibrary&) = delete;

  /// The whole picture with the settings of the shot, as the sensor saw it: not turned; 8-bit red, green, blue. Throws
  /// UserError naming the file.
  virtual imaging::PixelBuffer Develop(const std::string& path) = 0;

 protected:
  DevelopLibrary() = default;
};

}  // namespace ml::imagefiles
