#pragma once

#include <cstdint>
#include <optional>

#include "metadata/byte_source.h"
#include "metadata/file_range.h"
#include "rawconvert/nef/nef_camera.h"

namespace ml::rawconvert {

/// What a directory tells of raw data; 0 where it says nothing.
struct NefDirectory {
  std::uint32_t width = 0, height = 0;
  std::uint32_t bitsPerSample = 0;
  std::uint32_t compression = 0;
  std::uint32_t samplesPerPixel = 1;
  metadata::FileRange strip;  ///< strips that follow one another count as one
  bool contiguous = false;    ///< there is a strip, and no gap between it and others
};

/// Where a file has its raw data and what belongs to them.
struct NefLayout {
  metadata::ByteOrder order = metadata::ByteOrder::Big;
  const NefCamera* camera = nullptr;  ///< null if the model is not known
  NefDirectory raw;                   ///< of a sub-directory; E5700 files may have it in the first chain
  std::uint32_t exif = 0;             ///< where the EXIF directory stands; 0 if there is none
};

/// Walks the directories of the TIFF structure. Throws ExifException where there is none, UserError if the file
/// cannot be read.
NefLayout ReadNefLayout(const metadata::ByteSource& source);

}  // namespace ml::rawconvert
