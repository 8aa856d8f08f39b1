#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "metadata/byte_view.h"
#include "metadata/file_range.h"
#include "metadata/ifd.h"

namespace ml::metadata {

/// What a TIFF block of EXIF data has where. Positions count from the TIFF header.
struct ExifLayout {
  /// The thumbnail of the first directory that names place and length of one, cut to the block.
  struct Thumbnail {
    FileRange range;
    IfdEntry offsetEntry, lengthEntry;
  };
  std::optional<Thumbnail> thumbnail;
  std::optional<FileRange> userComment;       ///< tag 37510 with its encoding, where there is room for a text
  std::optional<FileRange> imageDescription;  ///< tag 270
  std::optional<std::uint64_t> lastLink;      ///< the empty pointer that ends the chain of directories
  std::vector<FileRange> used;                ///< header, directories and values, but not the thumbnail
  bool broken = false;                        ///< a directory could not be read; what it led to is missing

  /// How many directories and values have a byte in `range`.
  std::ptrdiff_t CountUses(FileRange range) const;
  bool Uses(FileRange range) const { return CountUses(range) > 0; }
};

/// Never throws.
ExifLayout FindExifLayout(ByteView tiff);

}  // namespace ml::metadata
