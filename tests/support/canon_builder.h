#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "support/tiff_builder.h"

/// What Canon cameras keep beside the standard's tags.
namespace ml::test {

/// An array with its size in bytes in front, zero but for these words.
std::vector<std::uint32_t> CanonArray(std::size_t count, const std::vector<std::pair<std::size_t, int>>& set);

/// The directory of a note, for TiffBuilder::Note without a prefix: settings, focal length of 100, shot information,
/// firmware, image number 1234567, owner, body number, custom functions, focus areas, and the colours of both kinds.
TiffBuilder CanonNote();

}  // namespace ml::test
