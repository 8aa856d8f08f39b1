#pragma once

#include <cstdint>
#include <optional>

#include "metadata/byte_source.h"
#include "metadata/file_range.h"

/// Where raw files that build on TIFF keep their previews. Every function here gives the range of a JPEG stream,
/// cut to the file, of which the first bytes were seen; nothing if there is none. They throw UserError only, if
/// the file cannot be read.
namespace ml::metadata {

/// Where the TIFF header stands in these files.
inline constexpr std::uint64_t kMrwTiffBase = 48;
inline constexpr std::uint64_t kRafTiffBase = 120;

/// Where it stands in this RAF file: in the JPEG that the file header names, which later cameras put further back;
/// kRafTiffBase if no JPEG with EXIF stands there. For readers and writers alike. Throws UserError only, if the file
/// cannot be read.
std::uint64_t FindRafTiffBase(const ByteSource& source);

/// The longest JPEG stream of the sub-directories (tag 330) of the first directory.
std::optional<FileRange> FindNefPreview(const ByteSource& source);
/// The longest of the directory chain, the sub-directories and the maker note. The magic number of the header is
/// not looked at: these files have several.
std::optional<FileRange> FindOrfPreview(const ByteSource& source);
/// The longest of the directory chain and the sub-directories.
std::optional<FileRange> FindPefPreview(const ByteSource& source);
/// As FindOrfPreview, from the TIFF block inside.
std::optional<FileRange> FindMrwPreview(const ByteSource& source);
/// The one which the file header names.
std::optional<FileRange> FindRafPreview(const ByteSource& source);

enum class TiffMagic { Required, Any };
/// The value of tag 274 in the first directory of the TIFF header at `base`, as stored; nothing if header or tag
/// are not there.
std::optional<std::uint32_t> ReadTiffOrientation(const ByteSource& source, std::uint64_t base,
                                                 TiffMagic magic = TiffMagic::Required);

}  // namespace ml::metadata
