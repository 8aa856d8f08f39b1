#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "metadata/byte_source.h"

namespace ml::metadata {

/// What the first directory of a TIFF file tells of its pixels; a missing tag has the value that TIFF 6.0 gives it,
/// or 0.
struct TiffFacts {
  ByteOrder order = ByteOrder::Little;
  std::uint32_t width = 0, height = 0;
  std::vector<std::uint32_t> bitsPerSample;  ///< one a sample; empty if the list could not be reached
  std::uint32_t compression = 1;
  std::uint32_t photometric = 0;  ///< 0 white is zero, 1 black is zero, 2 RGB, 3 palette
  std::uint32_t samplesPerPixel = 1;
  std::uint32_t rowsPerStrip = 0xffffffff;  ///< or all rows
  std::uint32_t planes = 1;                 ///< 1: samples of a pixel stand together; 2: each in strips of its own
  bool tiled = false;
  std::vector<std::uint32_t> stripOffsets, stripByteCounts;  ///< empty if a list could not be reached
};

/// Nothing if the file has no TIFF header or its first directory cannot be reached. Throws UserError if the file
/// cannot be read.
std::optional<TiffFacts> ReadTiffFacts(const ByteSource& source);

/// The profile in tag 34675 of the first directory, at most 8 MiB; nothing if there is none. Throws as above.
std::optional<std::vector<std::byte>> ReadTiffIccProfile(const ByteSource& source);

}  // namespace ml::metadata
