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

using BytesReader = void (*)(ExifData& data, ByteView bytes);
using FileReader = void (*)(ExifData& data, const ByteSource& file);

struct ExifHooks {
  BytesReader xmp = nullptr;           ///< an XMP packet
  BytesReader iptcBlock = nullptr;     ///< a bare run of datasets: TIFF tag 33723, a box of JPEG 2000
  BytesReader iptcResource = nullptr;  ///< the image resource of a PSD file
  FileReader jpegIptc = nullptr;       ///< a whole JPEG file with its APP13
};
inline constexpr ExifHooks kExifHooks;

}  // namespace ml::metadata
