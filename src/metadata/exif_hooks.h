#pragma once

#include <cstdint>
#include <string_view>

#include "metadata/byte_source.h"
#include "metadata/exif_data.h"

/// Where readers of private and foreign data join the reading of shooting data. A null reader is a kind of data that is
/// passed over.
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

using FileReader = void (*)(ExifData& data, const ByteSource& file);

struct ExifHooks {
  FileReader ciffProperties = nullptr;  ///< a whole CRW file, for what has no rule of its own
  std::string_view (*canonWhiteBalance)(std::uint32_t code) = nullptr;
};
inline constexpr ExifHooks kExifHooks;

}  // namespace ml::metadata
