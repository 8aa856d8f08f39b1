#pragma once

#include <cstddef>

/// How long IPTC data and their values may be, in bytes, for those who use them.
namespace ml::metadata {

/// Shorter values only go into format strings.
inline constexpr std::size_t kIptcFormatStringLimit = 1024;
/// No more bytes of a block are read; nobody writes a thousandth of it.
inline constexpr std::size_t kMostIptcBytes = std::size_t{64} << 20;

/// A file of IPTC data with a longer value is refused.
inline constexpr std::size_t kIptcLongestLoaded = 5120;
/// Shorter values only are edited; longer ones are left as they are.
inline constexpr std::size_t kIptcEditLimit = 10'240;

}  // namespace ml::metadata
