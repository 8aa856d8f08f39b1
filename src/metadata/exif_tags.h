#pragma once

#include <cstdint>

#include "metadata/ifd.h"

namespace ml::metadata {

class ExifWalk;

/// In which directory of which walk a tag is met.
namespace tag_place {
inline constexpr unsigned kBlockIfd0 = 1, kBlockExif = 2, kFileIfd0 = 4, kFileExif = 8;
}

/// Turns the value of one tag into fields of the walk's record. Throws ExifException.
using TagReader = void (*)(ExifWalk& walk, const IfdEntry& entry);

/// Null for tags that are not read there.
TagReader FindTagReader(std::uint16_t tag, unsigned place);

}  // namespace ml::metadata
