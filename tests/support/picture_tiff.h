#pragma once

#include "support/sample_photo.h"
#include "support/tiff_builder.h"

namespace ml::test {

struct TiffEncoding {
  Endian order = Endian::Little;  ///< that of the builder which will hold the directory
  int bits = 8;                   ///< a sample; 8 or 16
  bool grey = false;              ///< the green channel alone
  bool planar = false;            ///< each channel for itself
  int rowsPerStrip = 0;           ///< 0: all in one
};

/// A directory with the tags and strips of an uncompressed picture.
TiffBuilder PictureDirectory(const Picture& picture, const TiffEncoding& encoding = {});

}  // namespace ml::test
