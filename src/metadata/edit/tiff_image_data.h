#pragma once

#include <cstdint>
#include <vector>

#include "metadata/edit/edited_file.h"
#include "metadata/tiff_raw.h"

namespace ml::metadata {

/// Where the strips, tiles and JPEG streams of the chain of directories and of their sub-directories stand, as far as
/// that can be told; a cut file may end before. Never throws for what a file holds.
std::vector<FileRange> TiffImageData(const ByteSource& source, std::uint64_t base, TiffMagic magic);

/// Throws ExifException::OutOfBounds unless the directories of the edited file name the same image data as before, and
/// no byte of them is replaced or moved by the edit.
void RequireSameImageData(const EditedFile& edited, std::uint64_t base, TiffMagic magic);

}  // namespace ml::metadata
