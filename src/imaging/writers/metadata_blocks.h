#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "metadata/byte_view.h"
#include "metadata/exif_data.h"
#include "metadata/iptc/iptc_block.h"

namespace ml::imaging {

/// A maker's private note as it stood in its source.
struct MakerNote {
  std::vector<std::byte> bytes{};
  std::uint32_t offset = 0;  ///< of the first byte, from the TIFF header there
  metadata::ByteOrder order = metadata::ByteOrder::Little;
};

/// All that travels along into a new image file, ready to be written; each writer takes what its format holds. Made by
/// imagefiles::ReadMetadataBlocks, or by hand. All empty: a picture without a source.
struct MetadataBlocks {
  std::optional<metadata::ExifData> shooting{};  ///< the record of the source
  std::string summary{};                         ///< the record as text for people
  /// An EXIF segment of the source from its length field on; if empty or not to be understood, one is built from the
  /// record.
  std::vector<std::byte> exif{};
  std::vector<std::vector<std::byte>> furtherApp1{};  ///< payloads of other APP1 segments, such as XMP packets
  MakerNote makerNote{};
  metadata::IptcBlock iptc{};
  std::vector<std::byte> icc{};  ///< a colour profile
};

}  // namespace ml::imaging
