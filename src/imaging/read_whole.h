#pragma once

#include <cstddef>
#include <vector>

#include "metadata/byte_source.h"

namespace ml::imaging {

/// All bytes of a file, for libraries that take no less. Throws LibraryError over kMaxWholeFile or if there is
/// none, UserError if the file cannot be read.
std::vector<std::byte> ReadWhole(const metadata::ByteSource& source);

inline constexpr std::size_t kMaxWholeFile = std::size_t{768} * 1024 * 1024;

}  // namespace ml::imaging
