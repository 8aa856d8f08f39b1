#pragma once

#include <cstdint>
#include <string_view>

#include "metadata/byte_source.h"
#include "metadata/exif_data.h"

/// Where the readers of makers' private notes join the reading of shooting data.
namespace ml::metadata {

/// Makers' notes are read by other rules in the EXIF block of a JPEG than in a TIFF-like file.
enum class MakerNoteForm { Block, File };

/// The value of tag 37500.
struct MakerNote {
  const ByteSource& source;  ///< the block, or the file
  ByteOrder order = ByteOrder::Little;
  std::uint64_t offset = 0;  ///< of its first byte in `source`; may lie outside
  std::uint32_t count = 0;   ///< bytes as the entry says
  MakerNoteForm form = MakerNoteForm::Block;
};
/// Adds to the record. May throw ExifException; what was read until then stays.
using MakerNoteReader = void (*)(ExifData& data, const MakerNote& note);
/// Chosen by the first maker's word that stands anywhere in `make`, in any case; null if there is none.
MakerNoteReader FindMakerNoteReader(std::string_view make);

}  // namespace ml::metadata
