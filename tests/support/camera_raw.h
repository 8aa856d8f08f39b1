#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "support/sample_photo.h"
#include "support/tiff_builder.h"

/// Raw files as cameras write them, in what the program reads of them: directories, previews and sensor data
/// without compression. The directories are open to further tags.
namespace ml::test {

struct CameraRaw {
  unsigned seed = 1;
  int width = 1024, height = 768;  ///< of the sensor; even
  int previewWidth = 640, previewHeight = 480;
  int orientation = 1;  ///< tag 274
  std::string dateTime = "2003:05:17 10:11:12";
  std::string make{}, model{};  ///< empty: the format's own
  Endian order = Endian::Big;
};

/// Samples of 12 bits from rows of red and green, then green and blue.
std::vector<std::uint16_t> SensorData(const CameraRaw& raw);

/// A JPEG of the same scene.
std::string RawPreview(const CameraRaw& raw);

/// A thumbnail in the first directory, sub-directories with a JPEG preview and with the sensor data.
TiffBuilder NefDirectories(const CameraRaw& raw);
/// A thumbnail of 288 by 192 in the first directory; of the size of a raw file with the sensor of `CameraRaw`.
TiffBuilder Eos1DDirectories(const CameraRaw& raw);
/// Sensor data in the first directory and the preview in the maker note; the magic is not 42.
TiffBuilder OrfDirectories(const CameraRaw& raw);
/// Sensor data in the first directory, a thumbnail in the second and the preview in the third.
TiffBuilder PefDirectories(const CameraRaw& raw);

/// The blocks of the format around a TIFF block at byte 48, and the sensor data.
std::string MrwFile(const CameraRaw& raw, const TiffBuilder& tiff);
TiffBuilder MrwDirectories(const CameraRaw& raw);
/// The head of the format before a JPEG with EXIF, whose TIFF header comes to byte 120, or 12 behind a longer `head`.
std::string RafFile(const CameraRaw& raw, const TiffBuilder& tiff, std::size_t head = 108);
TiffBuilder RafDirectories(const CameraRaw& raw);

/// The small JPEG with EXIF that a camera puts beside files which cannot hold any.
std::string MakeThm(const CameraRaw& raw);

}  // namespace ml::test
