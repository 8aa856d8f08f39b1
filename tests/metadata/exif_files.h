#pragma once

#include <gtest/gtest.h>

#include <string>

#include "metadata/exif_data.h"
#include "support/jpeg_builder.h"
#include "support/temp_dir.h"
#include "support/tiff_builder.h"

namespace ml::test {

/// A JPEG of markers alone: the segments and a frame header of 640 x 480.
inline std::string MarkerJpeg(const std::string& segments) {
  const std::string frame("\x08\x01\xe0\x02\x80\x01\x01\x11\x00", 9);
  return "\xff\xd8" + segments + JpegSegment(0xc0, frame) + "\xff\xd9";
}

/// What cameras say in their two directories.
inline TiffBuilder CameraExif(Endian order = Endian::Little) {
  const auto exif = TiffBuilder(order)
                        .Rational(33434, 1, 250)
                        .Rational(33437, 28, 10)
                        .Short(34850, 3)
                        .Short(34855, 200)
                        .Ascii(36867, "2003:05:17 10:11:12")
                        .Ascii(36868, "2003:05:17 10:11:13")
                        .SignedRational(37380, -1, 3)
                        .Rational(37381, 3)
                        .Rational(37382, 652, 1000)
                        .Short(37383, 5)
                        .Short(37384, 10)
                        .Short(37385, 0x59)
                        .Rational(37386, 182, 10)
                        .Undefined(37510, std::string("ASCII\0\0\0A comment  ", 19))
                        .Long(40962, 3072)
                        .Long(40963, 2048)
                        .Rational(41988, 2)
                        .Short(41989, 29)
                        .Short(41992, 1)
                        .Short(41993, 2)
                        .Short(41994, 0);
  return TiffBuilder(order)
      .Ascii(270, "A description  ")
      .Ascii(271, "Tarnwick  ")
      .Ascii(272, "Sample 1")
      .Short(274, 6)
      .Ascii(305, "Version 1.2")
      .Ascii(306, "2004:01:02 03:04:05")
      .Ascii(315, "A. Photographer ")
      .Ascii(33432, "All rights ")
      .Directory(34665, exif);
}

/// A directory of files, and the records read from them.
class ExifFiles : public testing::Test {
 protected:
  metadata::ExifData Read(const std::string& name, const std::string& content,
                          const metadata::ExifOptions& options = {}) const {
    return metadata::ExifData(dir.Write(name, content), options);
  }
  /// In a segment if it is to be a JPEG.
  metadata::ExifData Read(const std::string& name, const TiffBuilder& tiff,
                          const metadata::ExifOptions& options = {}) const {
    return Read(name, name.ends_with(".jpg") ? MarkerJpeg(ExifSegment(tiff)) : tiff.Build(), options);
  }
  metadata::ExifData InJpeg(const TiffBuilder& tiff) const { return Read("a.jpg", tiff); }

  TempDir dir;
};

}  // namespace ml::test
