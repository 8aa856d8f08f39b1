#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "metadata/byte_view.h"

namespace ml::metadata {

/// A maker's note for another place: `note` stood `offset` bytes behind the TIFF header of a file in the order `from`
/// and is to stand at `newOffset` of one in the order `to`. Notes that count from their own start are returned as they
/// are, and so are those of a form nobody knows. Of the others, which count from the TIFF header, the values are taken
/// over that lie inside the note. The size does not depend on the places.
std::vector<std::byte> RelocatedNote(std::span<const std::byte> note, ByteOrder from, std::uint32_t offset,
                                     ByteOrder to, std::uint32_t newOffset);

}  // namespace ml::metadata
