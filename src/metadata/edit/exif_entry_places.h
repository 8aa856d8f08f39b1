#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "metadata/byte_source.h"
#include "metadata/edit/edited_file.h"
#include "metadata/ifd.h"

/// Entries of the EXIF blocks of a JPEG where they stand in the file, for those who overwrite them: the one way to
/// them.
namespace ml::metadata {

enum class ExifDirectory { First, Chained, Exif };

struct ExifEntryPlace {
  IfdEntry entry;  ///< `entry.position` counts in the file
  ByteOrder order = ByteOrder::Big;
  ExifDirectory directory = ExifDirectory::First;
  std::uint64_t block = 0;  ///< where the TIFF block stands that holds it
};

/// The entries with one of `tags`, in the order of the walk: each block of the file, its directories in the order of
/// their chain, the EXIF directory where the entry leads to it. A damaged block costs what stands behind the damage.
std::vector<ExifEntryPlace> FindExifEntries(const ByteSource& jpeg, std::span<const std::uint16_t> tags);

/// Whether the entry itself holds a single number: a short of either kind or a long.
bool HoldsNumber(const ExifEntryPlace& place);
/// That number.
std::uint32_t NumberIn(const ExifEntryPlace& place);
/// Overwrites it. Leaves an entry alone that does not hold one.
void OverwriteNumber(EditedFile& file, const ExifEntryPlace& place, std::uint32_t value);

/// Lets two entries of one directory change what they hold, each keeping its tag.
void SwapEntries(EditedFile& file, const ExifEntryPlace& first, const ExifEntryPlace& second);

}  // namespace ml::metadata
