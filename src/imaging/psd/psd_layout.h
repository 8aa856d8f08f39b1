#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "metadata/byte_source.h"

namespace ml::imaging {

/// The numbers are those of the file.
enum class PsdMode { Grey = 1, Indexed = 2, Rgb = 3, Cmyk = 4, Duotone = 8 };

/// What the sections before the merged picture say about it.
struct PsdLayout {
  bool large = false;  ///< version 2: lengths of rows have four bytes instead of two
  int channels = 0;
  int width = 0;
  int height = 0;
  int depth = 0;  ///< 8 or 16 bits a sample
  PsdMode mode = PsdMode::Rgb;
  std::array<std::byte, 768> palette{};  ///< 256 reds, greens, blues; for Indexed
  std::uint64_t picture = 0;             ///< where the merged picture begins: its compression, then the samples

  std::size_t RowBytes() const { return static_cast<std::size_t>(width) * static_cast<std::size_t>(depth / 8); }
  /// How many channels make the colour.
  int ColourChannels() const { return mode == PsdMode::Cmyk ? 4 : mode == PsdMode::Rgb ? 3 : 1; }
};

/// Throws LibraryError if it is no PSD file or of a kind that is not read; ExifException if it is cut short.
PsdLayout ReadPsdLayout(const metadata::ByteSource& source);

}  // namespace ml::imaging
