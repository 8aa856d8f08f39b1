#pragma once

#include <cstdint>
#include <span>

#include "metadata/edit/edited_file.h"
#include "metadata/ifd.h"
#include "metadata/tiff_raw.h"

/// Changes the first directory of a file that is a TIFF from its first byte on. Nothing that is there moves, so that
/// offsets which other directories and maker notes hold stay true; what needs room goes to the end of the file.
/// All throw ExifException and have then changed nothing: BadHeader for what is no TIFF header, OutOfBounds where the
/// file ends too early, LimitExceeded if an offset would not fit into 32 bits any more, DirectoryFull if one entry
/// more would hide the directory from readers.
namespace ml::metadata {

struct IfdField {
  std::uint16_t tag = 0;
  IfdType type = IfdType::Short;
  std::uint32_t count = 1;
  std::uint32_t value = 0;  ///< the number if it is a single short, else the long in the value field, mostly an offset
};

/// Overwrites the entries with this tag. Without one the directory moves to the end of the file, with the new entry
/// at its place in the order of tags and the link to the next directory kept; the header points to it then.
void UpdateIfdEntry(EditedFile& file, const IfdField& field, TiffMagic magic = TiffMagic::Required);

/// Takes the entries with this tag out, in place. Without one nothing happens.
void RemoveIfdEntry(EditedFile& file, std::uint16_t tag);

/// Throws LimitExceeded unless `bytes` more can be put behind the end in up to two pieces.
void RequireTiffRoom(const EditedFile& file, std::uint64_t bytes);
/// Puts `bytes` behind the end of the file and gives their offset, which is even.
std::uint32_t AppendTiffData(EditedFile& file, std::span<const std::byte> bytes);

/// Overwrites the value of the first entry with this tag, by its type as two shorts or as a long. The TIFF header
/// stands at `base`. False, with nothing changed, if there is no such entry.
bool OverwriteIfdNumber(EditedFile& file, std::uint64_t base, std::uint16_t tag, std::uint32_t value);

}  // namespace ml::metadata
