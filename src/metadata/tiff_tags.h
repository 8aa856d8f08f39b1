#pragma once

#include <cstdint>

/// Tags of TIFF directories, EXIF's among them, that code asks for by name. Tables of tags spell their numbers.
namespace ml::metadata::tiff_tag {

inline constexpr std::uint16_t kWidth = 256, kHeight = 257, kBitsPerSample = 258, kCompression = 259,
                               kPhotometric = 262, kDescription = 270, kMake = 271, kModel = 272, kStripOffsets = 273,
                               kOrientation = 274, kSamplesPerPixel = 277, kRowsPerStrip = 278, kStripByteCounts = 279,
                               kXResolution = 282, kYResolution = 283, kPlanes = 284, kResolutionUnit = 296,
                               kDate = 306, kArtist = 315, kTileWidth = 322, kTileOffsets = 324, kTileByteCounts = 325,
                               kSubDirectories = 330, kJpegOffset = 513, kJpegLength = 514, kCopyright = 33432,
                               kIptc = 33723, kExif = 34665, kIccProfile = 34675, kGps = 34853;

inline constexpr std::uint16_t kDateOriginal = 36867, kDateDigitized = 36868, kComponents = 37121,
                               kBitsPerPixel = 37122, kMakerNote = 37500, kUserComment = 37510, kColourSpace = 40961,
                               kPixelWidth = 40962, kPixelHeight = 40963, kInteroperability = 40965;

}  // namespace ml::metadata::tiff_tag
