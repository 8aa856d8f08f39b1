#pragma once

#include <cstdint>
#include <optional>

#include "metadata/byte_source.h"
#include "metadata/file_range.h"

/// What is asked of a CRW file.
namespace ml::metadata {

struct CrwTimeStamp {
  std::uint32_t seconds = 0;    ///< since 1970 by the camera's clock
  std::int32_t zoneOffset = 0;  ///< in seconds
  std::uint32_t third = 0;      ///< its meaning is the camera's
  std::uint64_t position = 0;   ///< of `seconds` in the file
};

/// Found in the heap of image properties; an absent record leaves its value empty.
struct CrwBasics {
  ByteOrder order = ByteOrder::Little;
  std::optional<std::int32_t> rotation;     ///< clockwise degrees as stored; cameras write 0, 90, 180, 270
  std::uint64_t rotationPosition = 0;       ///< of that number in the file
  std::optional<std::uint32_t> fileNumber;  ///< directory times 10,000 plus number
  std::optional<CrwTimeStamp> time;
};

/// Throws UserError with the reason if the header, the root or the heap of image properties is not sound.
CrwBasics ReadCrwBasics(const ByteSource& source);

/// Read from the heaps of camera settings inside the image properties; absent ones stay empty.
struct CrwSettings {
  std::optional<std::uint16_t> stitchShot;        ///< record 0x38, byte 44
  std::optional<std::uint16_t> colorSpace;        ///< record 0xB4: 1 sRGB, 2 AdobeRGB
  std::optional<std::uint16_t> colorTemperature;  ///< record 0xAE, kelvin
  std::optional<std::uint16_t> whiteBalance;      ///< record 0x2A, word 7, by the camera's table
};

/// Throws as ReadCrwBasics.
CrwSettings ReadCrwSettings(const ByteSource& source);

/// Where the preview JPEG stands, cut to the file; nothing if the root names none in the file.
std::optional<FileRange> FindCrwPreview(const ByteSource& source);

}  // namespace ml::metadata
