#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "metadata/byte_source.h"
#include "metadata/byte_writer.h"
#include "metadata/file_range.h"
#include "metadata/ifd.h"
#include "metadata/tiff_raw.h"

namespace ml::metadata {

/// A directory as a writer needs it: every entry, in the order of the file, and the link to the next one.
struct IfdDirectory {
  ByteOrder order = ByteOrder::Little;
  std::uint64_t base = 0;      ///< of the TIFF header in the file; offsets count from there
  std::uint64_t position = 0;  ///< of the number of entries, in the file
  std::vector<IfdEntry> entries{};
  std::uint32_t next = 0;  ///< as stored; 0 where the file ends before the link

  std::uint64_t EntryPosition(std::size_t index) const { return position + 2 + index * kIfdEntrySize; }
  /// The first entry with this tag, or null.
  const IfdEntry* Find(std::uint16_t tag) const;
};

/// The same as for a single entry, of the one at `index`.
FileRange IfdValueRange(const IfdDirectory& directory, std::size_t index);

/// Writes entries as they are, their values staying where they stand, and as a whole directory with its link.
void PutIfdEntry(ByteWriter& out, const IfdEntry& entry);
void PutIfdDirectory(ByteWriter& out, std::span<const IfdEntry> entries, std::uint32_t next);

/// Throws ExifException: OutOfBounds where an entry is missing.
IfdDirectory ReadIfdDirectory(const ByteSource& source, ByteOrder order, std::uint64_t base, std::uint32_t offset);
/// The first directory of the TIFF header at `base`. Throws the same, and BadHeader for what is no such header.
IfdDirectory ReadFirstDirectory(const ByteSource& source, std::uint64_t base, TiffMagic magic);

}  // namespace ml::metadata
