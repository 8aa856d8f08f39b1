#pragma once

#include <array>
#include <cstddef>

#include "metadata/psd_resources.h"

namespace ml::imaging {

using metadata::PsdMode;

/// What the sections before the merged picture say about it: only of kinds that are read, and with a merged picture.
struct PsdLayout {
  metadata::PsdFile file;                ///< of 8 or 16 bits a sample
  std::array<std::byte, 768> palette{};  ///< 256 reds, greens, blues; for Indexed

  std::size_t RowBytes() const {
    return static_cast<std::size_t>(file.width) * static_cast<std::size_t>(file.depth / 8);
  }
  /// How many channels make the colour.
  int ColourChannels() const { return file.mode == PsdMode::Cmyk ? 4 : file.mode == PsdMode::Rgb ? 3 : 1; }
};

/// Throws LibraryError if it is no PSD file, of a kind that is not read or cut short before the picture;
/// ExifException if it becomes shorter meanwhile.
PsdLayout ReadPsdLayout(const metadata::ByteSource& source);

}  // namespace ml::imaging
