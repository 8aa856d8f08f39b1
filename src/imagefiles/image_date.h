#pragma once

#include <cstdint>
#include <string>

namespace ml::imagefiles {

/// The time that an image sorts by, in seconds since 1970: when it was shot, else when the file last changed; below 0
/// if there is no such file. Reads dates only; of a format with a companion the companion's.
std::int64_t GetImageDateTime(const std::string& path);

}  // namespace ml::imagefiles
