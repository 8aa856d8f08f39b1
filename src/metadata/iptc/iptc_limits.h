#pragma once

#include <cstddef>

/// How long a value may be, in bytes, for those who use it.
namespace ml::metadata {

/// Shorter values only go into format strings.
inline constexpr std::size_t kIptcFormatStringLimit = 1024;
/// Shorter values only go into web pages.
inline constexpr std::size_t kIptcWebPageLimit = 3000;
/// A file of IPTC data with a longer value is refused.
inline constexpr std::size_t kIptcLongestLoaded = 5120;
/// Shorter values only are edited; longer ones are left as they are.
inline constexpr std::size_t kIptcEditLimit = 10'240;

}  // namespace ml::metadata
